// ParseChecked on arbitrary bytes, as a reply brings them: no crash; it fills the message
// exactly when the text's id is the message's, and then just as Parse of the same text
// does; otherwise the message stays as it was. The narrow and wide unique-id readers agree.
#include "messaging/CMessageEnvelope.h"
#include "messaging/EnvelopeIds.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "messaging/enumMSG_PING_Message.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

enumMSG_CONFIG_CHANGE_Message Marked() {
    enumMSG_CONFIG_CHANGE_Message message;
    message.SetProcessId(-1);
    message.SetFirstRun(-2);
    message.SetFilterOn(-3);
    message.SetAutoUpgrade(-4);
    message.SetShowCloseWindow(-5);
    message.SetUpgradePeriod(-6);
    message.SetHistoryDays(-7);
    message.SetConfigPath(u"marked");
    message.SetLanguage(u"marked too");
    return message;
}

bool Same(const enumMSG_CONFIG_CHANGE_Message& a, const enumMSG_CONFIG_CHANGE_Message& b) {
    return a.GetProcessId() == b.GetProcessId() && a.GetFirstRun() == b.GetFirstRun() &&
           a.GetFilterOn() == b.GetFilterOn() && a.GetAutoUpgrade() == b.GetAutoUpgrade() &&
           a.GetShowCloseWindow() == b.GetShowCloseWindow() &&
           a.GetUpgradePeriod() == b.GetUpgradePeriod() &&
           a.GetHistoryDays() == b.GetHistoryDays() && a.GetConfigPath() == b.GetConfigPath() &&
           a.GetLanguage() == b.GetLanguage();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > (1u << 16))
        return 0;
    const auto length = static_cast<std::uint32_t>(size);
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const stdstr xml = stdstr::toTString(bytes);
    const std::int32_t id = ReadMessageId(xml);
    Require(id >= 0 && id < 1024);

    auto config = Marked();
    CMessageEnvelope envelope;
    const bool accepted = envelope.ParseChecked(config, data, length);
    Require(accepted == (id == static_cast<std::int32_t>(enumMSG_CONFIG_CHANGE_Message::Id)));
    if (accepted) {
        auto parsed = Marked();
        CMessageEnvelope other;
        other.Parse(parsed, xml);
        Require(Same(config, parsed));
    } else {
        Require(Same(config, Marked()));
    }

    enumMSG_FILTER_CHANGE_Message filter;
    filter.SetFilterState(-99);
    CMessageEnvelope second;
    const bool filterAccepted = second.ParseChecked(filter, data, length);
    Require(filterAccepted == (id == 257));
    if (!filterAccepted)
        Require(filter.GetFilterState() == -99);

    enumMSG_PING_Message ping;
    CMessageEnvelope third;
    Require(third.ParseChecked(ping, data, length) == (id == 272));

    // The narrow reader sees the bytes as the wide one sees their text: up to the first zero
    // byte, and every tag and digit is ASCII, which the UTF-8 conversion never merges into
    // a neighbouring bad sequence.
    Require(ReadUniqueId(bytes.substr(0, bytes.find('\0'))) == ReadUniqueId(xml));
    return 0;
}
