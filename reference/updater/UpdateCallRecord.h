#pragma once
// The record of the updater's calls: one line per call, appended, each argument (the
// program's name not included) between square brackets, separated by one blank:
//   [-product=QG] [-mainexe=Quillgate.exe] [-version=4.0.0.1] [-code=] [-silent]
// Inside the brackets '\' is written "\\", ']' "\]", a line feed "\n" and a carriage return
// "\r", so that every call is one line and every argument can be read back exactly.
// Concurrent callers each append whole lines (flock around a single write).

#include <string>
#include <vector>

class UpdateCallRecord {
public:
    // $QUILLGATE_UPDATE_RECORD, else $ROOT/var/lib/velloran/quillgate/update-calls.txt.
    static std::string path();
    static std::string line(const std::vector<std::string>& arguments);
    // Appends the line of `arguments` to `file`, making its folder; false with `error` set.
    static bool append(const std::string& file, const std::vector<std::string>& arguments,
                       std::string& error);
};
