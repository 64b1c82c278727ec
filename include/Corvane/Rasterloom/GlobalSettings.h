#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>

namespace Corvane::Rasterloom {

/// Switches and limits of the process. Thread-safe.
///
/// The limits are for hosts that read files from strangers. They hold for every format, a host's own included, and for
/// whatever is read after they are set. What exceeds one fails with `Codecs::MediaCorruptedException`, whose text tells the
/// size found and the limit: when the file is opened, or before memory for the pixels is taken (a host's own format has made
/// its bitmap by then). 0 sets no limit and is the value at first; then only frames that no bitmap can hold are refused,
/// those that take more than 4,294,967,295 bytes.
class RASTERLOOM_API GlobalSettings {
public:
    GlobalSettings() = delete;

    /// Whether resizing may spread its rows over several processors; off at first. The results are the same. An
    /// operation under way is not affected.
    static bool get_MultiProcessorSupport();
    static void set_MultiProcessorSupport(bool value);
    /// Whether Adobe's colour management module can be used.
    static bool get_IsAdobeCmmAccessible();

    /// The largest frame that is accepted from a file, in pixels: width times height. It holds for thumbnails by the size of
    /// the frame that they are made of. Setting a negative value fails with `Host::ArgumentOutOfRangeException` ("value").
    static std::int64_t get_MaximumFramePixels() noexcept;
    static void set_MaximumFramePixels(std::int64_t value);
    /// The same in bytes of the bitmap that holds the frame: its stride times its height.
    static std::int64_t get_MaximumFrameBytes() noexcept;
    static void set_MaximumFrameBytes(std::int64_t value);
    /// The largest number of frames of one file. A file with more is refused as a whole, when it is opened.
    static std::int32_t get_MaximumFrameCount() noexcept;
    static void set_MaximumFrameCount(std::int32_t value);
};

} // namespace Corvane::Rasterloom
