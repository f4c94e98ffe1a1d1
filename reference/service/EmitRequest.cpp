#include "service/EmitRequest.h"

#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "service/MessageCatalogue.h"

#include <charconv>

namespace {

bool ReadInteger(const std::string& text, std::int32_t& out) {
    const char* begin = text.data();
    const char* end = begin + text.size();
    const auto [stop, failure] = std::from_chars(begin, end, out);
    return failure == std::errc() && stop == end && !text.empty();
}

bool ReadId(const std::string& text, std::uint32_t& id) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const char* begin = text.data() + (hex ? 2 : 0);
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(begin, end, id, hex ? 16 : 10);
    return failure == std::errc() && stop == end && begin != end && id >= 1 && id <= 1023;
}

std::string FieldList(const MessageEntry& entry) {
    std::string list;
    for (const FieldEntry& field : entry.fields)
        list += (list.empty() ? "" : ", ") + std::string(field.name);
    return list.empty() ? "none" : list;
}

} // namespace

std::optional<FieldMessage> EmitRequest::parse(const std::vector<std::string>& arguments,
                                               const SystemSettings& current, std::int32_t pid,
                                               std::string& error) {
    std::uint32_t id = 0;
    if (arguments.empty() || !ReadId(arguments[0], id)) {
        error = "expected a message id from 1 to 1023 (decimal or 0x...), then field=value";
        return std::nullopt;
    }
    const MessageEntry* entry = MessageCatalogue::find(id);
    std::vector<FieldValue> values;
    if (id == enumMSG_CONFIG_CHANGE_Message::Id) {
        values = current.fields(pid);
    } else if (entry) {
        for (const FieldEntry& field : entry->fields) {
            if (field.type == FieldType::Integer)
                values.emplace_back(std::int32_t{0});
            else
                values.emplace_back(stdstr());
        }
    }
    std::vector<FieldValue> extra;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const auto equals = argument.find('=');
        if (equals == std::string::npos || equals == 0) {
            error = "'" + argument + "' is not field=value";
            return std::nullopt;
        }
        const std::string name = argument.substr(0, equals);
        const std::string value = argument.substr(equals + 1);
        if (name == "int" || name == "str") {
            std::int32_t number = 0;
            if (name == "int" && !ReadInteger(value, number)) {
                error = "'" + value + "' is not a 32-bit integer";
                return std::nullopt;
            }
            extra.push_back(name == "int" ? FieldValue(number)
                                          : FieldValue(stdstr::toTString(value)));
            continue;
        }
        std::size_t index = 0;
        while (entry && index < entry->fields.size() && entry->fields[index].name != name)
            ++index;
        if (!entry || index == entry->fields.size()) {
            error = "message " + std::to_string(id) + " has no field '" + name +
                    "' (its fields: " + (entry ? FieldList(*entry) : std::string("none")) +
                    "; int=N and str=T add elements)";
            return std::nullopt;
        }
        if (entry->fields[index].type == FieldType::Integer) {
            std::int32_t number = 0;
            if (!ReadInteger(value, number)) {
                error = "field '" + name + "' takes a 32-bit integer, not '" + value + "'";
                return std::nullopt;
            }
            values[index] = number;
        } else {
            values[index] = stdstr::toTString(value);
        }
    }
    values.insert(values.end(), extra.begin(), extra.end());
    return FieldMessage(id, MessageCatalogue::nameOf(id), std::move(values));
}
