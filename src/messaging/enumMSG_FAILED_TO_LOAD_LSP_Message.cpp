#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_FAILED_TO_LOAD_LSP_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    env.PutString(m_componentName, body);
    out = std::move(body);
    return out;
}

void enumMSG_FAILED_TO_LOAD_LSP_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_componentName = env.GetString(text);
}
