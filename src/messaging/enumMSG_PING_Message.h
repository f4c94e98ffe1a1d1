#pragma once
// Asks the service whether it answers; it carries nothing but its id.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_PING_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x110;
    static constexpr const char16_t* Name = u"PING";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }
};
