#pragma once
// A message of any id that counts the live objects of its kind, so that a test can see
// whether the pump freed it.

#include "messaging/IMessage.h"

#include <atomic>

class CountedMessage : public IMessage {
public:
    explicit CountedMessage(std::uint32_t id) : m_id(id) { ++alive; }
    CountedMessage(const CountedMessage& other) : IMessage(other), m_id(other.m_id) { ++alive; }
    CountedMessage& operator=(const CountedMessage&) = default;
    ~CountedMessage() override { --alive; }

    stdstr& WriteBody(stdstr& out, CMessageEnvelope&) const override {
        out.clear();
        return out;
    }
    void ReadBody(const stdstr&, CMessageEnvelope&) override {}
    std::uint32_t GetId() const override { return m_id; }
    const char16_t* GetName() const override { return u"Counted"; }

    static inline std::atomic<int> alive{0};

private:
    std::uint32_t m_id;
};
