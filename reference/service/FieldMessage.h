#pragma once
// A message of any id with any fields: what the service reads when it only needs the values
// (to record them), and what it sends when a test asks for a message with fields of its
// choosing. The fields are integers or texts in wire order; read with a list of types, or,
// when the id's fields are not known, as texts for as many elements as the body holds.

#include "messaging/IMessage.h"

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

enum class FieldType { Integer, Text };
using FieldValue = std::variant<std::int32_t, stdstr>;

class FieldMessage : public IMessage {
public:
    // A message to read: with `types` the fields to expect, without them every element.
    FieldMessage(std::uint32_t id, stdstr name, std::optional<std::vector<FieldType>> types);
    // A message to send.
    FieldMessage(std::uint32_t id, stdstr name, std::vector<FieldValue> values);

    stdstr& WriteBody(stdstr& out, CMessageEnvelope& env) const override;
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override;
    std::uint32_t GetId() const override { return m_id; }
    const char16_t* GetName() const override { return m_name.c_str(); }

    const std::vector<FieldValue>& values() const { return m_values; }

private:
    std::uint32_t m_id;
    stdstr m_name;
    std::optional<std::vector<FieldType>> m_types;
    std::vector<FieldValue> m_values;
};
