#include "service/FieldMessage.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/EnvelopeTexts.h"

#include <utility>

FieldMessage::FieldMessage(std::uint32_t id, stdstr name,
                           std::optional<std::vector<FieldType>> types)
    : m_id(id), m_name(std::move(name)), m_types(std::move(types)) {}

FieldMessage::FieldMessage(std::uint32_t id, stdstr name, std::vector<FieldValue> values)
    : m_id(id), m_name(std::move(name)), m_values(std::move(values)) {}

stdstr& FieldMessage::WriteBody(stdstr& out, CMessageEnvelope& env) const {
    stdstr body;
    for (const FieldValue& value : m_values) {
        if (const auto* number = std::get_if<std::int32_t>(&value))
            env.PutInt(*number, body);
        else
            env.PutString(std::get<stdstr>(value), body);
    }
    out = std::move(body);
    return out;
}

void FieldMessage::ReadBody(const stdstr& text, CMessageEnvelope& env) {
    m_values.clear();
    if (m_types) {
        for (const FieldType type : *m_types) {
            if (type == FieldType::Integer)
                m_values.emplace_back(env.GetInt(text));
            else
                m_values.emplace_back(env.GetString(text));
        }
        return;
    }
    while (text.find(EnvelopeTexts::ElementOpen, env.GetCursor()) != stdstr::npos) {
        const std::uint32_t before = env.GetCursor();
        m_values.emplace_back(env.GetString(text));
        // An element without its close tag leaves the cursor where it was: nothing more
        // can be read.
        if (env.GetCursor() == before)
            break;
    }
}
