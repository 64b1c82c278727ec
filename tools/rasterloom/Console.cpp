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

/// Without C0 and C1 control characters, the latter in UTF-8.
std::string Printable(std::string text) {
    constexpr unsigned char space = 0x20;
    constexpr unsigned char deletion = 0x7F;
    constexpr unsigned char leadOfC1 = 0xC2;
    constexpr unsigned char endOfC1 = 0xA0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool c1 = byte == leadOfC1 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < endOfC1;
        if (byte < space || byte == deletion) {
            text[i] = '?';
        } else if (c1) {
            text.replace(i, 2, "?");
        }
    }
    return text;
}

void OnInterrupt(int) {
    s_interrupted.store(true);
}

} // namespace

void InstallInterruptHandler() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    // A second Ctrl-C ends the program at once, should the operation not listen.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    struct sigaction before {};
    sigaction(SIGHUP, nullptr, &before);
    if (before.sa_handler != SIG_IGN) { // which is how nohup asks to go on
        sigaction(SIGHUP, &action, nullptr);
    }
    // A reader that goes away is told by the write, when files are complete.
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, nullptr);
}

bool IsInterrupted() {
    return s_interrupted.load();
}

Console::Console(bool quiet) : m_quiet(quiet), m_terminal(isatty(STDERR_FILENO) == 1) {}

Console::~Console() {
    Erase();
}

void Console::Print(const std::string& line) {
    PrintText(Printable(line));
}

void Console::PrintText(const std::string& text) {
    if (m_quiet) {
        return;
    }
    const std::lock_guard lock(m_mutex);
    EraseLocked();
    m_complete = std::printf("%s\n", text.c_str()) >= 0 && std::fflush(stdout) == 0 && m_complete;
}

bool Console::IsComplete() const {
    const std::lock_guard lock(m_mutex);
    return m_complete;
}

void Console::Fail(const std::filesystem::path& file, const std::string& cause) {
    const std::lock_guard lock(m_mutex);
    EraseLocked();
    std::fprintf(stderr, "rasterloom: %s: %s\n", Printable(file.string()).c_str(), Printable(cause).c_str());
}

void Console::Note(const std::filesystem::path& file, const std::string& text) {
    Fail(file, "note: " + text);
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
