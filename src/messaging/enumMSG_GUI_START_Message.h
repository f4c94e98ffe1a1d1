#pragma once
// Tells the service that the main window is up, with this process's id.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_GUI_START_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x106;
    static constexpr const char16_t* Name = u"GUI Start";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    // The sender's process id.
    std::int32_t GetProcessId() const { return m_processId; }
    void SetProcessId(std::int32_t value) { m_processId = value; }

private:
    std::int32_t m_processId = 0;
};
