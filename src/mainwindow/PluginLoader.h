#pragma once
// Loads the plug-in library once at start-up, takes its five objects into the globals of
// PluginPointers.h and binds the host's handlers to its RPC object. Every failure is told
// to the user in a message box and the start ends; a plug-in that throws the foundation's
// exception while loading does not stop the start.

#include "mainwindow/PluginCallbacks.h"

#include <string>

class IMessageBoxes;

class PluginLoader {
public:
    // The name given to dlopen: a bare name, so that the program's run path ($ORIGIN) finds
    // the copy beside the program.
    static constexpr const char* LibraryName = "libQGPlugin.so";
    // The name that the failure messages show, the debug build's, whatever was loaded.
    static constexpr const char16_t* MessageLibraryName = u"libQGPlugin_d.so";

    // `library` is what dlopen is given; tests pass the path of a library of their own.
    PluginLoader(IMessageBoxes& messageBoxes, const PluginCallbacks& callbacks,
                 std::string library = LibraryName);

    // True when all five objects were made and the handlers bound, and also when the
    // foundation's exception came out of the plug-in (the objects may then be incomplete).
    bool LoadPlugin();

    // Frees the library if the handle is set (the main window's end). The five pointers are
    // left as they are.
    static void FreePlugin();

private:
    IMessageBoxes& m_messageBoxes;
    PluginCallbacks m_callbacks;
    std::string m_library;
};
