#include "Batch.h"

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/Host/MemoryStream.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

namespace Tool {

using namespace Corvane::Rasterloom;

namespace {

class Batch {
public:
    Batch(const std::vector<Task>& tasks, const BatchOptions& options, Console& console)
        : m_tasks(tasks), m_options(options), m_console(console) {}

    bool Run() {
        const auto count = std::clamp<std::size_t>(static_cast<std::size_t>(m_options.Jobs), 1, m_tasks.size());
        std::vector<std::jthread> workers;
        for (std::size_t i = 1; i < count; ++i) {
            workers.emplace_back([this] { Work(); });
        }
        Work();
        workers.clear();
        return m_failed == 0;
    }

private:
    void Work() {
        for (std::size_t index = m_next++; index < m_tasks.size() && !IsInterrupted(); index = m_next++) {
            const Task& task = m_tasks[index];
            const std::filesystem::path* current = &task.Output;
            try {
                Convert(task, current);
            } catch (const AbortedException&) {
                Fail(*current, "interrupted");
            } catch (const std::exception& exception) {
                Fail(*current, exception.what());
            }
            ++m_done;
        }
    }

    void Fail(const std::filesystem::path& file, const std::string& cause) {
        ++m_failed;
        m_console.Fail(file, cause);
    }

    void Convert(const Task& task, const std::filesystem::path*& current) {
        // What cannot be saved is told before the work, not after it.
        RequireTarget(task.Output);
        current = &task.Input;
        Bitmap bitmap;
        std::string step = "load";
        const auto progress = bitmap.Progress.Subscribe([&](ProgressEventArgs& args) { OnProgress(bitmap, step, args); });
        const auto start = std::chrono::steady_clock::now();
        const auto run = [&](const std::string& name, const auto& body) {
            step = name;
            const auto begin = std::chrono::steady_clock::now();
            const std::string text = body();
            if (m_tasks.size() == 1) {
                Print(name, text, begin);
            }
        };
        run("load", [&] { return task.Input.string() + ": " + m_options.Load(bitmap, task.Input, m_options.Choices); });
        for (const Operation& operation : m_options.Operations) {
            run(operation.Name, [&] { return operation.Run(bitmap, m_options.Choices); });
        }
        current = &task.Output;
        run("save", [&] {
            Save(bitmap, task.Output);
            return task.Output.string();
        });
        if (m_tasks.size() > 1) {
            Print("saved", task.Output.string() + ": " + Describe(bitmap), start);
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

    void Save(Bitmap& bitmap, const std::filesystem::path& file) const {
        const auto options = m_options.Saving.For(FormatOf(file));
        if (file != Standard) {
            bitmap.Save(file, options.get());
            return;
        }
        const auto stream = std::make_shared<Host::MemoryStream>();
        bitmap.Save(stream, options.get());
        const auto& bytes = stream->GetBuffer();
        if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) {
            throw std::runtime_error("standard output takes no more");
        }
    }

    void OnProgress(Bitmap& bitmap, const std::string& step, ProgressEventArgs& args) {
        if (IsInterrupted()) {
            bitmap.Abort();
        }
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

    void Print(const std::string& name, const std::string& text, std::chrono::steady_clock::time_point start) const {
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
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
