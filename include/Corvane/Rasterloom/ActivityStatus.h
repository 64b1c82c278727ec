#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// What the worker of an operation is doing.
enum class ActivityStatus : std::int32_t {
    ThreadStopped = 1,
    ThreadStarted = 2,
    ThreadPaused = 3,
    ThreadContinued = 4,
    ThreadRequestedToStart = 5,
};

} // namespace Corvane::Rasterloom
