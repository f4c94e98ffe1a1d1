#include "mainwindow/PluginLoader.h"

#include "foundation/CorvaneBaseException.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"
#include "localisation/QGEntString.h"
#include "mainwindow/IMessageBoxes.h"
#include "mainwindow/PluginContract.h"
#include "mainwindow/PluginPointers.h"

#include <dlfcn.h>

#include <array>

namespace {

constexpr std::uint32_t IDS_PRODUCT_NAME = 129;
constexpr std::uint32_t IDS_GUI_INIT_FAILED = 253;

// The keys of the two load failures. The plain text is shown as it stands, "##" and all:
// nothing translates it on this path.
constexpr const char16_t* LoadDllKey = u"LoadDll";
constexpr const char16_t* LoadFuncKey = u"LoadFunc";

// dlerror's words for the last failure of a dl call, the Linux counterpart of the
// system's message for the last error.
stdstr LastLoaderError() {
    const char* text = dlerror();
    return text == nullptr ? stdstr() : stdstr::toTString(text);
}

// The factories, in the order in which they are looked up and tested.
constexpr std::array<const char*, 5> FactoryNames = {
    "CreateQGInstance", "CreateQGInstanceStandAlone", "CreateCIInstance", "CreateQGInfo",
    "CreateRPCInstance"};

// One export: what dlsym gave for it, with dlerror's words on failure.
struct Export {
    void* address = nullptr;
    stdstr error;
};

} // namespace

PluginLoader::PluginLoader(IMessageBoxes& messageBoxes, const PluginCallbacks& callbacks,
                           std::string library)
    : m_messageBoxes(messageBoxes), m_callbacks(callbacks), m_library(std::move(library)) {}

bool PluginLoader::LoadPlugin() {
    try {
        // RTLD_NOW: the library's own undefined symbols fail the load, as they would on
        // Windows, rather than the first call into it.
        void* module = dlopen(m_library.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr) {
            const stdstr text =
                stringFmt(u"%s##%s##%s", LoadDllKey, MessageLibraryName, LastLoaderError());
            m_messageBoxes.MessageBox(nullptr, text, stdstr(), IMessageBoxes::MB_OK);
            return false;
        }
        m_hPluginModule = module;

        // All five are looked up first and tested afterwards, in the same order; the first
        // missing one is named.
        std::array<Export, FactoryNames.size()> exports;
        for (std::size_t i = 0; i < exports.size(); ++i) {
            dlerror();
            exports[i].address = dlsym(module, FactoryNames[i]);
            if (exports[i].address == nullptr)
                exports[i].error = LastLoaderError();
        }
        for (std::size_t i = 0; i < exports.size(); ++i) {
            if (exports[i].address != nullptr)
                continue;
            // The library stays loaded.
            const stdstr text = stringFmt(u"%s##%s##%s##%s", LoadFuncKey, FactoryNames[i],
                                          MessageLibraryName, exports[i].error);
            m_messageBoxes.MessageBox(nullptr, text, stdstr(), IMessageBoxes::MB_OK);
            return false;
        }

        const auto createPlugin = reinterpret_cast<CreateQGInstanceFunc>(exports[0].address);
        const auto createStandAlone =
            reinterpret_cast<CreateQGInstanceStandAloneFunc>(exports[1].address);
        const auto createCommonUI = reinterpret_cast<CreateCIInstanceFunc>(exports[2].address);
        const auto createInfo = reinterpret_cast<CreateQGInfoFunc>(exports[3].address);
        const auto createRpc = reinterpret_cast<CreateRPCInstanceFunc>(exports[4].address);

        // Each pointer is set as soon as its factory answers, so an exception from a later
        // factory leaves the earlier ones in place.
        m_pStandAlone = createStandAlone();
        m_pPlugin = createPlugin();
        m_pCommonUI = createCommonUI();
        m_pQGInfo = createInfo();
        m_pRPCExt = createRpc();

        if (m_pStandAlone != nullptr && m_pPlugin != nullptr && m_pCommonUI != nullptr &&
            m_pQGInfo != nullptr && m_pRPCExt != nullptr) {
            m_callbacks.Register(*m_pRPCExt);
            return true;
        }

        m_messageBoxes.MessageBox(nullptr, QGEntString(IDS_GUI_INIT_FAILED),
                                  QGEntString(IDS_PRODUCT_NAME), IMessageBoxes::MB_OK);
        TraceFmt(TRACE_ERROR,
                 u"m_pStandAlone: 0x%08p, m_pPlugin: 0x%08p, m_pCommonUI: 0x%08p, m_pQGInfo: "
                 u"0x%08p, m_pRPCExt: 0x%08p",
                 m_pStandAlone, m_pPlugin, m_pCommonUI, m_pQGInfo, m_pRPCExt);
        dlclose(m_hPluginModule);
        m_hPluginModule = nullptr;
        return false;
    } catch (const Corvane::BaseException& e) {
        // Deliberately a success: a plug-in that throws while loading does not stop the start.
        TraceFmt(TRACE_ERROR, u"CMainDlg::LoadPlugin(): Exception (%s)", e.GetMessage());
        return true;
    } catch (...) {
        TraceMsg(TRACE_ERROR, u"CMainDlg::LoadPlugin(): Unhandled exception");
        return false;
    }
}

void PluginLoader::FreePlugin() {
    if (m_hPluginModule == nullptr)
        return;
    dlclose(m_hPluginModule);
    m_hPluginModule = nullptr;
}
