#include "app/CommandLineScan.h"

CommandLineScan::Request CommandLineScan::Scan(const stdstr& commandLine) {
    if (commandLine.find(SilentWord) != stdstr::npos)
        return Request::SilentStart;
    for (const char16_t* word : KillWords) {
        if (commandLine.find(word) != stdstr::npos)
            return Request::KillAll;
    }
    return Request::NormalStart;
}

stdstr CommandLineScan::Join(int argc, const char* const* argv) {
    stdstr line;
    for (int i = 1; i < argc; ++i) {
        if (argv[i] == nullptr)
            break;
        if (i > 1)
            line.push_back(u' ');
        line += stdstr::toTString(argv[i]);
    }
    return line;
}
