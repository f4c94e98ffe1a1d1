#include "protocol/enumMSG_STATISTICS_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_STATISTICS_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    env.PutInt(m_spam, body);
    env.PutInt(m_examined, body);
    out = std::move(body);
    return out;
}

void enumMSG_STATISTICS_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_spam = env.GetInt(text);
    m_examined = env.GetInt(text);
}
