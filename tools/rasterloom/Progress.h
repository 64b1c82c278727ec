#pragma once

#include <Corvane/Rasterloom/Bitmap.h>

#include <string>

namespace Tool {

/// Makes Ctrl-C (and a polite kill) ask the operation under way to stop.
void InstallInterruptHandler();
/// True once Ctrl-C was pressed.
bool IsInterrupted();

/// Shows the progress of a bitmap's operations as a bar on a terminal, and passes Ctrl-C on to it. Draws nothing where
/// standard error is no terminal.
class Progress {
public:
    explicit Progress(Corvane::Rasterloom::Bitmap& bitmap);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Names what runs next.
    void Begin(std::string step);

private:
    void Show(int percent);
    void Erase();

    std::string m_step;
    int m_shown = -1;
    bool m_terminal;
    Corvane::Rasterloom::Host::Subscription m_subscription;
};

} // namespace Tool
