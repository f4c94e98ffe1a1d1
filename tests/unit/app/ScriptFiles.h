#pragma once
// Small shell scripts that tests run as programs: a stand-in for the service's executable
// and a stand-in for pkexec, written into a sandbox with execute permission, and a guard
// that puts a folder at the front of PATH for the life of a test.

#include "support/SandboxRoot.h"

#include <cstdlib>
#include <string>
#include <sys/stat.h>

inline std::string WriteScript(const TestSupport::SandboxRoot& root, const std::string& relative,
                               const std::string& body) {
    root.writeFile(relative, "#!/bin/sh\n" + body);
    const std::string path = root.file(relative);
    ::chmod(path.c_str(), 0755);
    return path;
}

// A pkexec that records its arguments, one per line, in `record` and answers `code` (or, with
// code -1, runs its arguments and answers their exit code, as pkexec does once authorised).
inline std::string WriteFakePkexec(const TestSupport::SandboxRoot& root, int code,
                                   const std::string& record) {
    const std::string run =
        code == -1 ? "\"$@\"\nexit $?\n" : "exit " + std::to_string(code) + "\n";
    return WriteScript(root, "bin/pkexec",
                       "for a in \"$@\"; do echo \"$a\" >> '" + record + "'; done\n" + run);
}

class PathFront {
public:
    explicit PathFront(const std::string& folder) {
        const char* path = std::getenv("PATH");
        m_saved = path ? path : "";
        ::setenv("PATH", (folder + ":" + m_saved).c_str(), 1);
    }
    ~PathFront() { ::setenv("PATH", m_saved.c_str(), 1); }
    PathFront(const PathFront&) = delete;
    PathFront& operator=(const PathFront&) = delete;

private:
    std::string m_saved;
};
