#pragma once
// Access to the test plug-in libraries (plugins/TestPlugin.cpp) from the tests: their
// paths, whether one is loaded, its journal and knobs, and a clean slate for the globals
// that the loader sets.

#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginLoader.h"
#include "mainwindow/PluginPointers.h"

#include <dlfcn.h>

#include <sstream>
#include <string>
#include <vector>

namespace TestPlugins {

inline std::string PathOf(const std::string& variant) {
    return std::string(QG_TEST_PLUGIN_DIR) + "/libqgtest_" + variant + ".so";
}

// The library found by the bare name through the test program's run path.
inline std::string RunPathLibrary() {
    return std::string(QG_TEST_PLUGIN_DIR) + "/runpath/libQGPlugin.so";
}

// Whether the library at `path` is in the process now; the test's own look leaves no
// reference behind.
inline bool IsLoaded(const std::string& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle == nullptr)
        return false;
    dlclose(handle);
    return true;
}

// The loader's globals back to their state before loading; frees a library still held.
inline void ResetPluginGlobals() {
    PluginLoader::FreePlugin();
    m_pStandAlone = nullptr;
    m_pPlugin = nullptr;
    m_pCommonUI = nullptr;
    m_pQGInfo = nullptr;
    m_pRPCExt = nullptr;
}

// A reference of the test's own to one test library, for its journal and knobs.
class Library {
public:
    explicit Library(const std::string& path) : m_handle(dlopen(path.c_str(), RTLD_NOW)) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() {
        if (m_handle != nullptr)
            dlclose(m_handle);
    }

    bool IsOpen() const { return m_handle != nullptr; }

    std::vector<std::string> Journal() const {
        using JournalFunc = const char* (*)();
        const auto journal = reinterpret_cast<JournalFunc>(dlsym(m_handle, "QGTestPlugin_Journal"));
        std::vector<std::string> lines;
        std::istringstream text(journal());
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

    // Empties the journal and forgets the knobs and the bound handlers.
    void Reset() const {
        using ResetFunc = void (*)();
        reinterpret_cast<ResetFunc>(dlsym(m_handle, "QGTestPlugin_Reset"))();
    }

    void Set(const char* knob, int value) const {
        using SetFunc = void (*)(const char*, int);
        reinterpret_cast<SetFunc>(dlsym(m_handle, "QGTestPlugin_Set"))(knob, value);
    }

    RPCHandler Handler(std::uint32_t messageId) const {
        using HandlerFunc = RPCHandler (*)(std::uint32_t);
        return reinterpret_cast<HandlerFunc>(dlsym(m_handle, "QGTestPlugin_Handler"))(messageId);
    }

private:
    void* m_handle;
};

} // namespace TestPlugins
