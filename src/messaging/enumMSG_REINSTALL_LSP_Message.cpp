#include "messaging/enumMSG_REINSTALL_LSP_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_REINSTALL_LSP_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    body.reserve(3 * 11 + m_file.size() + m_parameters.size() + m_folder.size());
    env.PutString(m_file, body);
    env.PutString(m_parameters, body);
    env.PutString(m_folder, body);
    out = std::move(body);
    return out;
}

void enumMSG_REINSTALL_LSP_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_file = env.GetString(text);
    m_parameters = env.GetString(text);
    m_folder = env.GetString(text);
}
