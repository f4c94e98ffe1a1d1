#include "messaging/enumMSG_GUI_START_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_GUI_START_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    env.PutInt(m_processId, body);
    out = std::move(body);
    return out;
}

void enumMSG_GUI_START_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_processId = env.GetInt(text);
}
