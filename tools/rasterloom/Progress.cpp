#include "Progress.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace Tool {

namespace {

constexpr int BarWidth = 32;

std::atomic<bool> s_interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may only set a lock-free flag");

void OnInterrupt(int) { s_interrupted.store(true); }

} // namespace

void InstallInterruptHandler() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    // A second Ctrl-C ends the program at once, should the operation not listen.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool IsInterrupted() { return s_interrupted.load(); }

Progress::Progress(Corvane::Rasterloom::Bitmap& bitmap)
    : m_terminal(isatty(STDERR_FILENO) == 1),
      m_subscription(bitmap.Progress.Subscribe([this, &bitmap](Corvane::Rasterloom::ProgressEventArgs& args) {
          if (IsInterrupted()) {
              bitmap.Abort();
          }
          if (args.get_Maximum() > 0) {
              Show(static_cast<int>(100LL * args.get_Current() / args.get_Maximum()));
          }
      })) {}

Progress::~Progress() { Erase(); }

void Progress::Begin(std::string step) {
    Erase();
    m_step = std::move(step);
    m_shown = -1;
}

void Progress::Show(int percent) {
    if (!m_terminal || percent == m_shown) {
        return;
    }
    m_shown = percent;
    const int filled = percent * BarWidth / 100;
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(BarWidth - filled), '.');
    std::fprintf(stderr, "\r%-12s [%s] %3d%%", m_step.c_str(), bar.c_str(), percent);
    std::fflush(stderr);
}

void Progress::Erase() {
    if (m_terminal && m_shown >= 0) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
    }
}

} // namespace Tool
