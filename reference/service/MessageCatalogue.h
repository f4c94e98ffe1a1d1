#pragma once
// The messages the service knows: for each id its display name and its fields, in wire order,
// with the names by which the control command sets them. The program's classes give the
// names; ids 261 and 265 have no class and carry no fields that the program reads.

#include "service/FieldMessage.h"

#include <cstdint>
#include <string_view>
#include <vector>

struct FieldEntry {
    std::string_view name;
    FieldType type;
};

struct MessageEntry {
    std::uint32_t id;
    stdstr name;
    std::vector<FieldEntry> fields;
    // Sent by the service to the program (as opposed to requests it receives).
    bool inbound;
};

class MessageCatalogue {
public:
    // The entry of `id`, or null.
    static const MessageEntry* find(std::uint32_t id);
    static const std::vector<MessageEntry>& all();
    // The name of a message of `id`: the catalogue's, else "Message <id>".
    static stdstr nameOf(std::uint32_t id);
    static std::vector<FieldType> typesOf(const MessageEntry& entry);
};
