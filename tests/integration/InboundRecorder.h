#pragma once
// Handlers for the plug-in's RPC object that write down every call they get: which handler
// (by the id it was bound for) got which envelope, in the order of the calls. One handler
// per message id, as the program binds them; plain functions, as the contract wants, so the
// record is process-wide.

#include "mainwindow/PluginCallbacks.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

class InboundRecorder {
public:
    struct Call {
        // The id that the handler was bound for.
        std::uint32_t handler;
        // The envelope as the handler got it (byteLength / 2 UTF-16 units).
        std::u16string text;
        // Whether the RPC object gave null out parameters, as it must.
        bool repliesCleared;
    };

    static std::vector<Call> Calls() {
        const std::lock_guard lock(Mutex());
        return Store();
    }
    static std::size_t Count() {
        const std::lock_guard lock(Mutex());
        return Store().size();
    }
    static void Clear() {
        const std::lock_guard lock(Mutex());
        Store().clear();
    }

    template <std::uint32_t Id>
    static std::int32_t Handle(const std::uint8_t* data, std::uint32_t byteLength,
                               std::uint8_t** reply, std::int32_t* replyLength) {
        std::u16string text(byteLength / 2, u'\0');
        for (std::size_t i = 0; i < text.size(); ++i)
            text[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
        const bool cleared =
            reply != nullptr && *reply == nullptr && replyLength != nullptr && *replyLength == 0;
        const std::lock_guard lock(Mutex());
        Store().push_back(Call{Id, std::move(text), cleared});
        return 1;
    }

    // The seven handlers of the program's ids, each recording under its own id.
    static PluginCallbacks Callbacks() {
        PluginCallbacks callbacks;
        callbacks.trayAnimation = &Handle<PluginCallbacks::TrayAnimationId>;
        callbacks.failedToLoadLsp = &Handle<PluginCallbacks::FailedToLoadLspId>;
        callbacks.id261 = &Handle<PluginCallbacks::UnnamedId261>;
        callbacks.lspError = &Handle<PluginCallbacks::LspErrorId>;
        callbacks.reinstallLsp = &Handle<PluginCallbacks::ReinstallLspId>;
        callbacks.exitProgram = &Handle<PluginCallbacks::ExitId>;
        callbacks.configChange = &Handle<PluginCallbacks::ConfigChangeId>;
        return callbacks;
    }

private:
    static std::mutex& Mutex() {
        static std::mutex mutex;
        return mutex;
    }
    static std::vector<Call>& Store() {
        static std::vector<Call> calls;
        return calls;
    }
};
