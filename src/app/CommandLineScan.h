#pragma once
// What the command line asks for. The words are found as plain sub-strings, case-sensitive,
// anywhere in the line (also inside a longer word or a path), tested in a fixed order in
// which the first hit wins: "-s" for a silent start, then the four kill words. Nothing is
// split into tokens. On Linux the line is the program's arguments joined with one blank,
// which is what a Windows program gets after its own name.

#include "foundation/stdstr.h"

#include <array>

class CommandLineScan {
public:
    enum class Request {
        NormalStart, // the main window is shown
        SilentStart, // "-s": the main window starts hidden
        KillAll,     // "/U", "/u", "-U" or "-u": every running copy is ended
    };

    static constexpr const char16_t* SilentWord = u"-s";
    // Tested after SilentWord, in this order.
    static constexpr std::array<const char16_t*, 4> KillWords = {u"/U", u"/u", u"-U", u"-u"};

    static Request Scan(const stdstr& commandLine);

    // argv[1..argc-1] (UTF-8) joined with single blanks; empty without arguments.
    static stdstr Join(int argc, const char* const* argv);
};
