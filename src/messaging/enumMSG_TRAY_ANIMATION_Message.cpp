#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_TRAY_ANIMATION_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    env.PutInt(m_animation, body);
    out = std::move(body);
    return out;
}

void enumMSG_TRAY_ANIMATION_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_animation = env.GetInt(text);
}
