#pragma once

#include <cstdint>

namespace Corvane::Rasterloom {

/// How a worker ranks among the threads of the system. A rank that the system does not grant is left out silently.
enum class ThreadPriority : std::int32_t {
    Lowest = 0,
    BelowNormal = 1,
    Normal = 2,
    AboveNormal = 3,
    Highest = 4,
};

} // namespace Corvane::Rasterloom
