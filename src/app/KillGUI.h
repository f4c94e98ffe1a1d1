#pragma once
// Ends every running copy of the program, for the kill words of the command line. Each
// process whose image is named "quillgate" (in any case) is ended, walking the processes in
// ascending id order. The calling copy is one of them and is not left out: when the walk
// reaches its own entry it ends itself with exit code 0, and the entries after it are not
// reached. The name is fixed, not the running image's, so a copy under another file name
// neither finds the others nor ends itself.
//
// In a sandbox root (QUILLGATE_ROOT set: the demo, the tests) only the copies started under
// the same root are ended, so that a demo or a test never ends the user's own Quillgate or
// that of another sandbox; a copy's root is read from its environment (slashes at the end do
// not count). Name and root are checked with the process's handle open, so that an id given
// to another process after the snapshot cannot lead to the wrong process being ended.

#include <string>
#include <string_view>
#include <sys/types.h>

class ProcessControl;

class KillGUI {
public:
    static constexpr const char* ImageName = "quillgate";

    // The program's way: the system's proc file system, pidfds, and the process's own
    // sandbox root.
    KillGUI();
    // For tests; `control` must outlive the object. An empty `sandboxRoot` ends every copy.
    KillGUI(std::string procRoot, ProcessControl& control, std::string sandboxRoot);

    void Run();

    // Whether `name` is the program's image name, ignoring ASCII case.
    static bool IsProgramImage(const std::string& name);
    // `path` without the slashes at its end.
    static std::string_view WithoutTrailingSlashes(std::string_view path);

private:
    // Outside a sandbox every copy counts; inside one, those of the same root.
    bool BelongsHere(pid_t pid) const;

    std::string m_procRoot;
    std::string m_sandboxRoot;
    ProcessControl& m_control;
};
