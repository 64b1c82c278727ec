#pragma once

#include <Corvane/Rasterloom/Api.h>

namespace Corvane::Rasterloom {

/// Switches of the process. Thread-safe.
class RASTERLOOM_API GlobalSettings {
public:
    GlobalSettings() = delete;

    /// Whether resizing may spread its rows over several processors; off at first. The results are the same. An
    /// operation under way is not affected.
    static bool get_MultiProcessorSupport();
    static void set_MultiProcessorSupport(bool value);
    /// Whether Adobe's colour management module can be used.
    static bool get_IsAdobeCmmAccessible();
};

} // namespace Corvane::Rasterloom
