#pragma once
// Sent by the service when a component could not be loaded; the program shows the name and
// ends.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_FAILED_TO_LOAD_LSP_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x104;
    static constexpr const char16_t* Name = u"Failed to load LSP";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    // The name of what failed to load.
    const stdstr& GetComponentName() const { return m_componentName; }
    void SetComponentName(const stdstr& value) { m_componentName = value; }

private:
    stdstr m_componentName;
};
