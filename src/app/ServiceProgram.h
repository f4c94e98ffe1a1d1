#pragma once
// Where the service's executable is: "qgsasvc" in the folder of the running program, where
// the installation puts it (/usr/lib/quillgate). The environment variable
// QUILLGATE_SERVICE_PROGRAM, when set and not empty, names another file instead; the demo and
// the tests use it to run the reference service from the build tree, or a stand-in that
// fails. With elevation the path must be absolute and match the polkit action's
// org.freedesktop.policykit.exec.path.

#include "foundation/stdstr.h"

#include <optional>

class ServiceProgram {
public:
    static constexpr const char* OverrideVariable = "QUILLGATE_SERVICE_PROGRAM";
    static constexpr const char16_t* FileName = u"qgsasvc";

    // The override, else the file beside the running program; nothing when the running
    // program's own path cannot be had.
    static std::optional<stdstr> Path();
    // "qgsasvc" in the folder of `programPath`: what stands before its last '/', or the
    // whole path when there is none.
    static stdstr BesideProgram(const stdstr& programPath);
};
