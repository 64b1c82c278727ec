#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// Where an operation runs and where its events are raised.
enum class SynchronizationMode : std::int32_t {
    Sync = 0,                ///< on the caller's thread
    Async = 1,               ///< on a worker, events too
    AsyncViaMessageLoop = 2, ///< on a worker, events on the caller's thread through its message loop
};

} // namespace Corvane::Rasterloom
