#pragma once
// The plug-in's RPC object as a test drives it: SendRequest answers scripted statuses (and
// hands out a scripted reply buffer, which it expects back through FreeBuffer), every call is
// recorded, and the handlers that were registered can be called as the service's messages
// would call them, with the envelope as UTF-16 bytes.

#include "mainwindow/RpcContract.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class FakeRpcExt : public IRPCExt {
public:
    struct Request {
        std::u16string server;
        std::string data; // exactly `length` bytes
        std::uint32_t length = 0;
    };
    struct Freed {
        const std::uint8_t* buffer = nullptr;
        std::int32_t length = 0;
    };

    std::int32_t UnregisterHandler(std::uint32_t messageId) override {
        unregistered.push_back(messageId);
        handlers.erase(messageId);
        return 0;
    }

    std::int32_t FreeBuffer(std::uint8_t** reply, std::int32_t* replyLength) override {
        freed.push_back(Freed{*reply, *replyLength});
        for (auto it = m_outstanding.begin(); it != m_outstanding.end(); ++it) {
            if (it->get()->data() == *reply) {
                m_outstanding.erase(it);
                break;
            }
        }
        *reply = nullptr;
        *replyLength = 0;
        return 0;
    }

    std::uint32_t SendRequest(const char16_t* serverName, const std::uint8_t* data,
                              std::uint32_t length, std::uint8_t** reply,
                              std::int32_t* replyLength) override {
        requests.push_back(Request{serverName ? std::u16string(serverName) : std::u16string(),
                                   std::string(reinterpret_cast<const char*>(data), length),
                                   length});
        if (onSendRequest)
            onSendRequest();
        if (nextReply) {
            auto buffer =
                std::make_unique<std::vector<std::uint8_t>>(nextReply->begin(), nextReply->end());
            *reply = buffer->data();
            *replyLength = replyLengthOverride.value_or(static_cast<std::int32_t>(buffer->size()));
            lastReplyBuffer = buffer->data();
            m_outstanding.push_back(std::move(buffer));
        }
        if (statuses.empty())
            return defaultStatus;
        const std::uint32_t status = statuses.front();
        statuses.pop_front();
        return status;
    }

    std::int32_t RegisterHandler(std::uint32_t messageId, RPCHandler handler) override {
        registered.push_back(messageId);
        handlers[messageId] = handler;
        return 0;
    }

    // Calls the handler registered for `messageId` with `xml` as little-endian UTF-16 bytes;
    // -1 when there is none.
    std::int32_t Deliver(std::uint32_t messageId, const std::u16string& xml, std::uint8_t** reply,
                         std::int32_t* replyLength) {
        const auto it = handlers.find(messageId);
        if (it == handlers.end() || it->second == nullptr)
            return -1;
        std::string bytes;
        for (const char16_t unit : xml) {
            bytes += static_cast<char>(unit & 0xFF);
            bytes += static_cast<char>(unit >> 8);
        }
        return it->second(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                          static_cast<std::uint32_t>(bytes.size()), reply, replyLength);
    }

    // Reply buffers handed out and not given back.
    std::size_t Outstanding() const { return m_outstanding.size(); }

    // The script: statuses in order, then defaultStatus; a reply for every request while
    // nextReply is set (with its size as length unless overridden); a hook that runs inside
    // SendRequest (to throw, for instance).
    std::deque<std::uint32_t> statuses;
    std::uint32_t defaultStatus = 1;
    std::optional<std::string> nextReply;
    std::optional<std::int32_t> replyLengthOverride;
    std::function<void()> onSendRequest;

    // The record.
    std::vector<Request> requests;
    std::vector<Freed> freed;
    std::vector<std::uint32_t> registered;
    std::vector<std::uint32_t> unregistered;
    std::map<std::uint32_t, RPCHandler> handlers;
    const std::uint8_t* lastReplyBuffer = nullptr;

private:
    std::vector<std::unique_ptr<std::vector<std::uint8_t>>> m_outstanding;
};
