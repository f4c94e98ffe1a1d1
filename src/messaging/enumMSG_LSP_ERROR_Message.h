#pragma once
// Sent by the service when the traffic layer failed; it carries nothing but its id.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_LSP_ERROR_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x107;
    static constexpr const char16_t* Name = u"LSP Error";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }
};
