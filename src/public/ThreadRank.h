#pragma once

#include <Corvane/Rasterloom/ThreadPriority.h>

namespace Corvane::Rasterloom {

/// Ranks the calling thread among those of the system, as far as the system lets it.
void SetThreadRank(ThreadPriority priority) noexcept;

} // namespace Corvane::Rasterloom
