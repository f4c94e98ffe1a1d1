#pragma once
// The process entry of the program (wWinMain's place): it answers --help and --version, and
// otherwise runs EntrySequence with the steps of this program, for the command line that
// the arguments make (argv[1..] joined with blanks, see CommandLineScan).
//
// The window system is Qt's: the QApplication stands where COM, the control-hosting classes
// and the common controls were brought up, and goes where COM was taken down. It is given
// the program's name only, so that Qt takes none of the user's words as its own options
// ("-session", "-style"...). It does not quit when its last window closes: the program ends
// only through its exit sequence, as a tray program must. The exit code that main returns is
// the shell's modulo 256: -1 is 255.

#include "app/IEntrySteps.h"

#include <QApplication>

#include <memory>
#include <string>

class CVLQuillgateApp;

class ProgramEntry : private IEntrySteps {
public:
    static constexpr const char* HelpOption = "--help";
    static constexpr const char* VersionOption = "--version";

    // `module` is _Module in the program.
    ProgramEntry(CVLQuillgateApp& module, int argc, char** argv);
    ~ProgramEntry() override;
    ProgramEntry(const ProgramEntry&) = delete;
    ProgramEntry& operator=(const ProgramEntry&) = delete;

    // The exit code.
    int Main();

    // The texts of the two options.
    static std::string HelpText();
    // "quillgate <version>", the version from the program file's package note, or "unknown".
    static std::string VersionText();

private:
    void SetUpLogging() override;
    void KillGUI() override;
    void StartWindowSystem() override;
    std::int32_t Init() override;
    bool LoadPlugin() override;
    int Run() override;
    void Term() override;
    void StopWindowSystem() override;
    void ShowExceptionBox(const stdstr& message) override;

    CVLQuillgateApp& m_module;
    int m_argc;
    char** m_argv;
    // Qt keeps a reference to the count it is given.
    int m_qtArgc = 1;
    std::unique_ptr<QApplication> m_application;
};
