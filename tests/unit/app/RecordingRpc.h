#pragma once
// The plug-in's RPC object as the settings tests need it: it records the bytes of every
// request and answers status 1 without a reply. Installed in m_pRPCExt for the life of the
// object.

#include "mainwindow/PluginPointers.h"
#include "mainwindow/RpcContract.h"

#include <cstdint>
#include <string>
#include <vector>

class RecordingRpc final : public IRPCExt {
public:
    struct Request {
        std::u16string server;
        std::string bytes;
    };

    RecordingRpc() { m_pRPCExt = this; }
    ~RecordingRpc() { m_pRPCExt = nullptr; }
    RecordingRpc(const RecordingRpc&) = delete;
    RecordingRpc& operator=(const RecordingRpc&) = delete;

    std::int32_t UnregisterHandler(std::uint32_t) override { return 0; }
    std::int32_t FreeBuffer(std::uint8_t** reply, std::int32_t* replyLength) override {
        *reply = nullptr;
        *replyLength = 0;
        return 0;
    }
    std::uint32_t SendRequest(const char16_t* serverName, const std::uint8_t* data,
                              std::uint32_t length, std::uint8_t** reply,
                              std::int32_t* replyLength) override {
        requests.push_back(Request{serverName ? serverName : u"",
                                   std::string(reinterpret_cast<const char*>(data), length)});
        *reply = nullptr;
        *replyLength = 0;
        return 1;
    }
    std::int32_t RegisterHandler(std::uint32_t, RPCHandler) override { return 0; }

    std::vector<Request> requests;
};
