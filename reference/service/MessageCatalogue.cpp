#include "service/MessageCatalogue.h"

#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"
#include "protocol/enumMSG_STATISTICS_Message.h"

namespace {

constexpr FieldType Int = FieldType::Integer;
constexpr FieldType Text = FieldType::Text;

std::vector<MessageEntry> Build() {
    return {
        {enumMSG_TRAY_ANIMATION_Message::Id,
         enumMSG_TRAY_ANIMATION_Message::Name,
         {{"animation", Int}},
         true},
        {enumMSG_FILTER_CHANGE_Message::Id,
         enumMSG_FILTER_CHANGE_Message::Name,
         {{"state", Int}},
         false},
        {enumMSG_CONFIG_CHANGE_Message::Id,
         enumMSG_CONFIG_CHANGE_Message::Name,
         {{"processId", Int},
          {"FirstRun", Int},
          {"FilterOn", Int},
          {"AutoUpgrade", Int},
          {"ShowCloseWindow", Int},
          {"UpgradePeriod", Int},
          {"HistoryDays", Int},
          {"ConfigPath", Text},
          {"Language", Text}},
         true},
        {enumMSG_FAILED_TO_LOAD_LSP_Message::Id,
         enumMSG_FAILED_TO_LOAD_LSP_Message::Name,
         {{"name", Text}},
         true},
        {0x105, u"Message 261", {}, true},
        {enumMSG_GUI_START_Message::Id,
         enumMSG_GUI_START_Message::Name,
         {{"processId", Int}},
         false},
        {enumMSG_LSP_ERROR_Message::Id, enumMSG_LSP_ERROR_Message::Name, {}, true},
        {enumMSG_REINSTALL_LSP_Message::Id,
         enumMSG_REINSTALL_LSP_Message::Name,
         {{"file", Text}, {"parameters", Text}, {"folder", Text}},
         true},
        {0x109, u"Message 265", {}, true},
        {enumMSG_PING_Message::Id, enumMSG_PING_Message::Name, {}, false},
        {enumMSG_STATISTICS_Message::Id,
         enumMSG_STATISTICS_Message::Name,
         {{"spam", Int}, {"examined", Int}},
         false},
    };
}

} // namespace

const std::vector<MessageEntry>& MessageCatalogue::all() {
    static const std::vector<MessageEntry> entries = Build();
    return entries;
}

const MessageEntry* MessageCatalogue::find(std::uint32_t id) {
    for (const MessageEntry& entry : all()) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

stdstr MessageCatalogue::nameOf(std::uint32_t id) {
    if (const MessageEntry* entry = find(id))
        return entry->name;
    return stdstr::toTString("Message " + std::to_string(id));
}

std::vector<FieldType> MessageCatalogue::typesOf(const MessageEntry& entry) {
    std::vector<FieldType> types;
    for (const FieldEntry& field : entry.fields)
        types.push_back(field.type);
    return types;
}
