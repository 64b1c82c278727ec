// Thumbnails of all pictures of a folder, on all cores. Shows how bitmaps and threads go together: each thread has a bitmap
// of its own, nothing is shared, and nothing has to be locked. Usage: batch_thumbnails FOLDER OUT_FOLDER [LONGEST_SIDE]
//
// `LoadThumbnail` reads a reduced form: a large photograph is never in memory as a whole.
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/GlobalSettings.h>
#include <Corvane/Rasterloom/Transforms/PixelFormatConverter.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iostream>
#include <string>
#include <syncstream>
#include <thread>
#include <vector>

using namespace Corvane::Rasterloom;
namespace fs = std::filesystem;

namespace {

/// The regular files of a folder, in the order of their names.
std::vector<fs::path> FilesOf(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    return files;
}

class Thumbnails {
public:
    Thumbnails(std::vector<fs::path> files, fs::path outFolder, std::int32_t longestSide)
        : m_files(std::move(files)), m_outFolder(std::move(outFolder)), m_intLongestSide(longestSide) {}

    /// False when a picture failed.
    bool Run() {
        const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < std::min(cores, m_files.size()); ++i) {
            threads.emplace_back([this] { Work(); });
        }
        threads.clear(); // waits for them
        return !m_failed;
    }

private:
    void Work() {
        Bitmap bitmap; // of this thread; used again and again
        Transforms::PixelFormatConverter toRgb(PixelFormat::Format24bppRgb);
        toRgb.set_BackgroundEnabled(true); // white, where a picture is transparent
        Codecs::JpegEncoderOptions options(85);
        for (std::size_t next = m_next++; next < m_files.size(); next = m_next++) {
            const fs::path& file = m_files[next];
            try {
                bitmap.LoadThumbnail(file, m_intLongestSide, m_intLongestSide);
                toRgb.ApplyTransform(bitmap);
                // "a.png" and "a.jpg" may stand side by side, so the old extension stays in the name.
                const fs::path out = m_outFolder / (file.filename().string() + ".jpg");
                bitmap.Save(out, &options);
                std::osyncstream(std::cout)
                    << out.string() << ": " << bitmap.get_Width() << " x " << bitmap.get_Height() << '\n';
            } catch (const Codecs::MediaUnsupportedException&) {
                std::osyncstream(std::cout) << file.string() << ": no picture, skipped\n";
            } catch (const Host::Exception& failure) {
                m_failed = true; // one broken file does not stop the others
                std::osyncstream(std::cerr) << file.string() << ": " << failure.get_Message() << '\n';
            }
        }
    }

    const std::vector<fs::path> m_files;
    const fs::path m_outFolder;
    const std::int32_t m_intLongestSide;
    std::atomic<std::size_t> m_next{0};
    std::atomic<bool> m_failed{false};
};

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3 && argc != 4) {
        std::cerr << "usage: batch_thumbnails FOLDER OUT_FOLDER [LONGEST_SIDE]\n";
        return 2;
    }
    // Files of strangers: nothing above 200 million pixels is tried.
    GlobalSettings::set_MaximumFramePixels(200'000'000);
    fs::create_directories(argv[2]);
    Thumbnails thumbnails(FilesOf(argv[1]), argv[2], argc == 4 ? std::stoi(argv[3]) : 256);
    return thumbnails.Run() ? 0 : 1;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
