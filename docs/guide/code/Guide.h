#pragma once

// What the programs of the guide share. Each of them runs in a folder that holds lake.bmp and text.bmp, writes the pictures
// of its page there, and fails when something that the page says is not so.

#include <Corvane/Rasterloom/Host/Errors.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <source_location>
#include <string>

/// Ends the program when the page tells something else than what is.
inline void Expect(bool holds, std::source_location where = std::source_location::current()) {
    if (!holds) {
        std::cerr << where.file_name() << ':' << where.line() << ": this is not what the page says\n";
        std::exit(1);
    }
}

/// Runs the parts of a page; a failure that no part expects ends the program with its text.
inline int RunPage(std::initializer_list<std::function<void()>> parts) {
    try {
        for (const auto& part : parts) {
            part();
        }
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "unexpected: " << failure.what() << '\n';
        return 1;
    }
}
