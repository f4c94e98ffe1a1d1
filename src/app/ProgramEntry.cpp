#include "app/ProgramEntry.h"

#include "app/CVLQuillgateApp.h"
#include "app/CommandLineScan.h"
#include "app/EntrySequence.h"
#include "app/KillGUI.h"
#include "foundation/ApplicationFinder.h"
#include "foundation/Trace.h"
#include "localisation/QGEntString.h"
#include "mainwindow/IMessageBoxes.h"
#include "mainwindow/PluginLoader.h"
#include "mainwindow/ProgramPluginCallbacks.h"

#include "resource.h"

#include <cstring>
#include <iostream>

ProgramEntry::ProgramEntry(CVLQuillgateApp& module, int argc, char** argv)
    : m_module(module), m_argc(argc), m_argv(argv) {}

ProgramEntry::~ProgramEntry() {
    StopWindowSystem();
}

std::string ProgramEntry::HelpText() {
    return "Usage: quillgate [-s | -u]\n"
           "The desktop front end of the Quillgate mail filter.\n"
           "\n"
           "  -s         start with the main window hidden; the filter, its service and\n"
           "             the status messages work as usual\n"
           "  -u         end every running copy of Quillgate (also /u, -U and /U)\n"
           "  --help     show this text and leave\n"
           "  --version  show the program's version and leave\n"
           "\n"
           "The words are found anywhere in the command line, also inside a longer word\n"
           "or a path; the first of -s, /U, /u, -U, -u that is found decides.\n";
}

std::string ProgramEntry::VersionText() {
    const stdstr version = GetFileVersionText(u"/proc/self/exe");
    return "quillgate " +
           (version.empty() ? std::string("unknown") : stdstr::fromTString(version)) + "\n";
}

int ProgramEntry::Main() {
    for (int i = 1; i < m_argc; ++i) {
        if (std::strcmp(m_argv[i], HelpOption) == 0) {
            std::cout << HelpText();
            return 0;
        }
        if (std::strcmp(m_argv[i], VersionOption) == 0) {
            std::cout << VersionText();
            return 0;
        }
    }
    EntrySequence entry(*this);
    const int exitCode = entry.Run(CommandLineScan::Join(m_argc, m_argv));
    // Also after the exception, which skips the window system's end.
    StopWindowSystem();
    return exitCode;
}

void ProgramEntry::SetUpLogging() {
    ::SetUpLogging();
}

void ProgramEntry::KillGUI() {
    ::KillGUI().Run();
}

void ProgramEntry::StartWindowSystem() {
    m_application = std::make_unique<QApplication>(m_qtArgc, m_argv);
    QApplication::setApplicationName(QStringLiteral("quillgate"));
    QApplication::setQuitOnLastWindowClosed(false);
}

std::int32_t ProgramEntry::Init() {
    return m_module.Init();
}

bool ProgramEntry::LoadPlugin() {
    PluginLoader loader(m_module.MessageBoxes(), ProgramPluginCallbacks());
    return loader.LoadPlugin();
}

int ProgramEntry::Run() {
    return m_module.Run();
}

void ProgramEntry::Term() {
    m_module.Term();
}

void ProgramEntry::StopWindowSystem() {
    if (!m_application)
        return;
    m_module.ReleaseWindowSystemParts();
    m_application.reset();
}

void ProgramEntry::ShowExceptionBox(const stdstr& message) {
    const QGEntString caption(IDS_PRODUCT_NAME);
    m_module.MessageBoxes().MessageBox(nullptr, message, caption, IMessageBoxes::MB_OK);
}
