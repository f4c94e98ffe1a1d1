#pragma once
// Corvane::ApplicationFinder: finds out about program files; what the system uses of it is
// the version of a file, read from the package note that the build writes into every
// binary (see ElfPackageNote). A file without that note has no version.

#include "foundation/stdstr.h"

#include <string>

namespace Corvane {

class ApplicationFinder {
public:
    ApplicationFinder() = default;
    virtual ~ApplicationFinder();

    // The four numbers of the file's version. False when the file has no version text;
    // numbers that the text does not give keep what the caller put in them.
    bool getFileVersion(const std::u16string& path, int& first, int& second, int& third,
                        int& fourth) const;

    // Reads a version text into the four numbers in two passes over one buffer, the first
    // splitting at ',' and the second at '.', each storing its tokens in order until one is
    // missing; a token counts by the number at its start. The first pass ends its tokens in
    // the buffer, so "1, 2, 3, 4" and "1.2.3.4" both give 1, 2, 3, 4.
    static void parseVersionText(const std::u16string& text, int& first, int& second, int& third,
                                 int& fourth);
};

} // namespace Corvane

// The file's version as "%d.%d.%d.%d"; empty when it has none.
stdstr GetFileVersionText(const stdstr& path);
