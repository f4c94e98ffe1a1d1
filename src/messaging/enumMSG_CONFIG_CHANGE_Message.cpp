#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"

#include "messaging/CMessageEnvelope.h"

#include <utility>

stdstr& enumMSG_CONFIG_CHANGE_Message::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    // Room for seven integers of any size and the two texts, so that the body grows once.
    stdstr body;
    body.reserve(7 * 22 + 2 * 11 + m_configPath.size() + m_language.size());
    env.PutInt(m_processId, body);
    env.PutInt(m_firstRun, body);
    env.PutInt(m_filterOn, body);
    env.PutInt(m_autoUpgrade, body);
    env.PutInt(m_showCloseWindow, body);
    env.PutInt(m_upgradePeriod, body);
    env.PutInt(m_historyDays, body);
    env.PutString(m_configPath, body);
    env.PutString(m_language, body);
    out = std::move(body);
    return out;
}

void enumMSG_CONFIG_CHANGE_Message::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_processId = env.GetInt(text);
    m_firstRun = env.GetInt(text);
    m_filterOn = env.GetInt(text);
    m_autoUpgrade = env.GetInt(text);
    m_showCloseWindow = env.GetInt(text);
    m_upgradePeriod = env.GetInt(text);
    m_historyDays = env.GetInt(text);
    m_configPath = env.GetString(text);
    m_language = env.GetString(text);
}
