#pragma once
// The application object's Init: the start-up of the process up to the point where the
// plug-in can be loaded, in nineteen steps with their trace lines, three early returns and
// two catch clauses. Every failure gives E_FAIL; the entry turns all of them into the same
// quiet exit code 0, which is how a second copy leaves.

#include "foundation/stdstr.h"

#include <cstdint>

class IStartupSteps;

class StartupSequence {
public:
    static constexpr std::int32_t S_OK = 0;
    static constexpr std::int32_t E_FAIL = static_cast<std::int32_t>(0x80004005u);

    // The words of the two exceptions that a broken installation gives.
    static constexpr const char16_t* NotInstalledMessage =
        u"Quillgate failed to initialize. Please make sure Quillgate is properly installed";
    static constexpr const char16_t* ThrowingFile = u"VLQuillgateApp";
    static constexpr int ModuleFileNameLine = 152;
    static constexpr int ModuleInitLine = 174;

    // What the start-up learns about where things are.
    struct Paths {
        stdstr exePath;
        // The path up to, not including, its last '/'; empty when it has none.
        stdstr exeFolder;
        stdstr configFolder;
    };

    explicit StartupSequence(IStartupSteps& steps);

    // Runs the steps; 0 for success. An exception other than the foundation's is shown as
    // "Unhandled exception" and thrown on.
    std::int32_t Init();

    const Paths& GetPaths() const { return m_paths; }

    // The folder part of `path`: what stands before its last '/', empty without one.
    static stdstr FolderOf(const stdstr& path);
    // Makes `folder` if it is not there, one level only (its parent must exist). False when
    // it is not there and cannot be made.
    static bool EnsureFolder(const stdstr& folder);

private:
    std::int32_t RunSteps();

    IStartupSteps& m_steps;
    Paths m_paths;
};
