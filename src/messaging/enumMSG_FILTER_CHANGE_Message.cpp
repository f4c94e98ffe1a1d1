#include "messaging/enumMSG_FILTER_CHANGE_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_FILTER_CHANGE_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    env.PutInt(m_filterState, body);
    out = std::move(body);
    return out;
}

void enumMSG_FILTER_CHANGE_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_filterState = env.GetInt(text);
}
