#pragma once
// The plug-in's journal: when the environment variable QGPLUGIN_JOURNAL names a file, every
// call of the host and every private message that a page receives is appended to it as one
// line, written with a single write() so that each line reaches the file whole and at once
// (a test reads it while the program runs). The variable is looked at for every line, so a
// test can point each case at a file of its own. docs/plugin-contract.md has the format.

#include <string_view>

class Journal {
public:
    static constexpr const char* Variable = "QGPLUGIN_JOURNAL";

    // Whether a journal file is named now.
    static bool Enabled();
    // Appends `line` and a line feed; nothing when no file is named or it cannot be opened.
    static void Append(std::string_view line);
};
