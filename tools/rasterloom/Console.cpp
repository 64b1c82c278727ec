#include "Console.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace Tool {

namespace {

constexpr std::int32_t BarWidth = 32;

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

Console::Console(bool quiet) : m_quiet(quiet), m_terminal(isatty(STDERR_FILENO) == 1) {}

Console::~Console() { Erase(); }

void Console::Print(const std::string& line) {
    if (m_quiet) {
        return;
    }
    const std::lock_guard lock(m_mutex);
    EraseLocked();
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

void Console::Fail(const std::filesystem::path& file, const std::string& cause) {
    const std::lock_guard lock(m_mutex);
    EraseLocked();
    std::fprintf(stderr, "rasterloom: %s: %s\n", file.c_str(), cause.c_str());
}

void Console::Show(const std::string& label, std::int32_t percent) {
    if (!m_terminal) {
        return;
    }
    const std::int32_t filled = percent * BarWidth / 100;
    char text[160];
    std::snprintf(text, sizeof text, "%-24.24s [%s%s] %3d%%", label.c_str(),
                  std::string(static_cast<std::size_t>(filled), '#').c_str(),
                  std::string(static_cast<std::size_t>(BarWidth - filled), '.').c_str(), percent);
    const std::lock_guard lock(m_mutex);
    if (m_shown != text) {
        m_shown = text;
        std::fprintf(stderr, "\r%s", text);
        std::fflush(stderr);
    }
}

void Console::Erase() {
    const std::lock_guard lock(m_mutex);
    EraseLocked();
}

void Console::EraseLocked() {
    if (!m_shown.empty()) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        m_shown.clear();
    }
}

} // namespace Tool
