#include "Batch.h"

#include "Conversions.h"

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <thread>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

bool HoldsProfile(std::int64_t format) {
    using Codecs::FormatManager;
    return format == FormatManager::JpegFormat || format == FormatManager::PngFormat ||
           format == FormatManager::TiffFormat;
}

class Batch {
public:
    Batch(const std::vector<Task>& tasks, const BatchOptions& options, Console& console)
        : m_tasks(tasks), m_options(options), m_console(console) {}

    bool Run() {
        const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
        const std::size_t jobs = m_options.Jobs == 0 ? processors : static_cast<std::size_t>(m_options.Jobs);
        std::vector<std::jthread> workers;
        for (std::size_t i = 1; i < std::min(jobs, m_tasks.size()); ++i) {
            workers.emplace_back([this] { Work(); });
        }
        Work();
        workers.clear();
        return m_failed == 0;
    }

private:
    using Clock = std::chrono::steady_clock;

    void Work() {
        for (std::size_t index = m_next++; index < m_tasks.size() && !IsInterrupted(); index = m_next++) {
            const Task& task = m_tasks[index];
            const std::filesystem::path* current = &task.Output;
            try {
                Convert(task, current);
            } catch (const std::exception& exception) {
                ++m_failed;
                m_console.Fail(*current, IsInterrupted() ? "interrupted" : exception.what());
            }
            ++m_done;
        }
    }

    /// `current` follows the file that a failure would be about.
    void Convert(const Task& task, const std::filesystem::path*& current) {
        // What cannot be saved is told before the work, not after it.
        RequireTarget(task.Output);
        current = &task.Input;
        Picture picture;
        Bitmap& bitmap = picture.Pixels;
        std::string step = "load";
        const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) {
            if (IsInterrupted()) {
                bitmap.Abort();
            }
            OnProgress(step, args);
        });
        const auto start = Clock::now();
        const auto run = [&](const std::string& name, const auto& body) {
            step = name;
            const auto begin = Clock::now();
            const std::string text = body();
            if (m_tasks.size() == 1) {
                Print(name, text, begin);
            }
        };
        run("load", [&] { return task.Input.string() + ": " + Load(picture, task.Input); });
        for (const Operation& operation : m_options.Operations) {
            run(operation.Name, [&] { return operation.Run(bitmap, m_options.Choices); });
            picture.Changed = true;
        }
        const std::int64_t format = FormatOf(task.Output);
        Prepare(picture, task.Input, format);
        current = &task.Output;
        std::string carried;
        run("save", [&] {
            carried = Save(picture, task, format);
            return task.Output.string() + carried;
        });
        if (m_tasks.size() > 1) {
            Print("saved", task.Output.string() + ": " + Describe(bitmap) + carried, start);
        }
    }

    std::string Load(Picture& picture, const std::filesystem::path& file) {
        const auto onProgress = [&](ISyncHandler& reader, ProgressEventArgs& args) {
            if (IsInterrupted()) {
                reader.Abort();
            }
            OnProgress("load", args);
        };
        LoadPicture(picture, file, m_options.Loading, m_options.Choices, onProgress,
                    [&](const std::string& text) { m_console.Note(file, text); });
        return Describe(picture.Pixels);
    }

    /// Makes the picture and its metadata what the file is to hold.
    void Prepare(Picture& picture, const std::filesystem::path& input, std::int64_t format) {
        if (m_options.Loading.Strip) {
            picture.Metadata = {};
        }
        if (picture.Changed) {
            FollowChanges(picture.Metadata, picture.Pixels);
        }
        const ColorChoices& colors = m_options.Choices.Colors;
        if (colors.ProfileOut || colors.ProfileIn) {
            FollowProfile(picture.Metadata, colors.IsResultSrgb());
        }
        FitToFormat(picture.Pixels, format, colors);
        if (m_options.Loading.Strip) {
            picture.Pixels.set_ColorProfile(nullptr);
        }
        const std::int32_t orientation = GetOrientation(picture.Metadata);
        if (orientation != 1 && AddMetadata(*m_options.Saving.For(format), picture.Metadata).empty()) {
            m_console.Note(input, "the EXIF orientation " + std::to_string(orientation) +
                                      " has no place in the result; --auto-orient turns the pixels");
        }
    }

    std::int64_t FormatOf(const std::filesystem::path& file) const {
        return FindFormatForSave(file == Standard ? m_options.StandardOutputFormat : file.extension().string());
    }

    void RequireTarget(const std::filesystem::path& file) const {
        FormatOf(file);
        if (file != Standard && !m_options.Force && std::filesystem::exists(file)) {
            throw std::runtime_error("the file exists; --force replaces it");
        }
    }

    /// Tells what went into the file beside the pixels.
    std::string Save(Picture& picture, const Task& task, std::int64_t format) {
        const auto options = m_options.Saving.For(format);
        std::string carried = AddMetadata(*options, picture.Metadata);
        if (HoldsProfile(format) && picture.Pixels.get_ColorProfile()) {
            carried += std::string(carried.empty() ? "" : ", ") + "profile";
        }
        try {
            Write(picture.Pixels, task.Output, *options);
        } catch (const UnexpectedException&) {
            // The thumbnail that was made anew may be larger than the old one, and the block is limited.
            if (IsInterrupted() || !DropThumbnail(picture.Metadata)) {
                throw;
            }
            Write(picture.Pixels, task.Output, *options);
            m_console.Note(task.Input,
                           "the EXIF thumbnail is left out, since the EXIF block would be too large with it");
        }
        return carried.empty() ? "" : ", with " + carried;
    }

    void Write(Bitmap& bitmap, const std::filesystem::path& file, const Codecs::EncoderOptions& options) const {
        if (file != Standard) {
            // Once more, since the work may have taken long.
            RequireTarget(file);
            bitmap.Save(file, &options);
            return;
        }
        const auto stream = std::make_shared<Host::MemoryStream>();
        bitmap.Save(stream, &options);
        const auto& bytes = stream->GetBuffer();
        if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) {
            throw std::runtime_error("standard output takes no more");
        }
    }

    void OnProgress(const std::string& step, ProgressEventArgs& args) {
        if (args.get_Maximum() <= 0) {
            return;
        }
        const auto percent = static_cast<std::int32_t>(100LL * args.get_Current() / args.get_Maximum());
        const std::size_t done = m_done;
        if (m_tasks.size() == 1) {
            m_console.Show(step, percent);
        } else {
            m_console.Show(std::to_string(done) + " of " + std::to_string(m_tasks.size()) + " files",
                           static_cast<std::int32_t>(100 * done / m_tasks.size()));
        }
    }

    void Print(const std::string& name, const std::string& text, Clock::time_point start) const {
        const std::chrono::duration<double, std::milli> time = Clock::now() - start;
        char line[64];
        std::snprintf(line, sizeof line, " (%.1f ms)", time.count());
        std::string padded = name;
        padded.resize(std::max<std::size_t>(padded.size(), 8), ' ');
        m_console.Print(padded + " " + text + line);
    }

    const std::vector<Task>& m_tasks;
    const BatchOptions& m_options;
    Console& m_console;
    std::atomic<std::size_t> m_next{0};
    std::atomic<std::size_t> m_done{0};
    std::atomic<std::size_t> m_failed{0};
};

} // namespace

bool RunBatch(const std::vector<Task>& tasks, const BatchOptions& options, Console& console) {
    return Batch(tasks, options, console).Run() && !IsInterrupted();
}

} // namespace Tool
