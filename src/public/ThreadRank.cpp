#include "ThreadRank.h"

#if defined(__linux__)
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace Corvane::Rasterloom {

void SetThreadRank(ThreadPriority priority) noexcept {
    if (priority == ThreadPriority::Normal) {
        return;
    }
#if defined(__linux__)
    // Linux ranks threads by nice values, which other systems keep per process only. Five steps of nice stand for one
    // of ours; going above normal needs a right that most processes do not have.
    const int nice = (static_cast<int>(ThreadPriority::Normal) - static_cast<int>(priority)) * 5;
    (void)setpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)), nice);
#endif
}

} // namespace Corvane::Rasterloom
