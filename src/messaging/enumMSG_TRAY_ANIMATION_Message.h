#pragma once
// Sent by the service to start or stop the tray icon's animation; the selector goes to the
// main window unchanged.

#include "messaging/IMessage.h"

#include <cstdint>

class enumMSG_TRAY_ANIMATION_Message : public IMessage {
public:
    static constexpr std::uint32_t Id = 0x100;
    static constexpr const char16_t* Name = u"Tray Animation";

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return Id; }
    const char16_t* GetName() const override { return Name; }

    // The animation selector.
    std::int32_t GetAnimation() const { return m_animation; }
    void SetAnimation(std::int32_t value) { m_animation = value; }

private:
    std::int32_t m_animation = 0;
};
