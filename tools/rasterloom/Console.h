#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>

namespace Tool {

/// What the program shows while it works: one bar on a terminal, one line for each failure. Safe to call from any
/// thread.
class Console {
public:
    /// `quiet` leaves standard output to a picture.
    explicit Console(bool quiet);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// A line on standard output. Control characters of all texts are shown as "?", so that no file writes to a
    /// terminal as it likes.
    void Print(const std::string& line);
    /// Text of several lines, as it stands.
    void PrintText(const std::string& text);
    /// False once standard output took no more.
    bool IsComplete() const;
    /// One clear line for what went wrong with a file.
    void Fail(const std::filesystem::path& file, const std::string& cause);
    /// One line for what is left out of a file that is saved.
    void Note(const std::filesystem::path& file, const std::string& text);
    /// Shows how far the work called `label` is. Draws nothing where standard error is no terminal.
    void Show(const std::string& label, std::int32_t percent);
    void Erase();

private:
    void EraseLocked();

    mutable std::mutex m_mutex;
    bool m_complete = true;
    bool m_quiet;
    bool m_terminal;
    std::string m_shown;
};

/// Makes Ctrl-C (and a polite kill) ask the operations under way to stop.
void InstallInterruptHandler();
/// True once Ctrl-C was pressed.
bool IsInterrupted();

} // namespace Tool
