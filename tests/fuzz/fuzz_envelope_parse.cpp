// Parse on arbitrary UTF-16 text, as an inbound call brings it: no crash, the reader is
// called once with its cursor at 0, the tag search agrees with the standard one, and
// whatever the text yields, the message written again and read back gives the same fields.
#include "messaging/CMessageEnvelope.h"
#include "messaging/EnvelopeIds.h"
#include "messaging/IMessage.h"
#include "messaging/TextSearch.h"
#include "messaging/TransportText.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

class RecordingMessage : public IMessage {
public:
    stdstr& WriteBody(stdstr& out, CMessageEnvelope&) const override {
        out.clear();
        return out;
    }
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override {
        ++calls;
        inner = text;
        cursor = env.GetCursor();
    }
    std::uint32_t GetId() const override { return 0x102; }
    const char16_t* GetName() const override { return u"Recording"; }

    int calls = 0;
    stdstr inner;
    std::uint32_t cursor = 1;
};

bool Same(const enumMSG_CONFIG_CHANGE_Message& a, const enumMSG_CONFIG_CHANGE_Message& b) {
    return a.GetProcessId() == b.GetProcessId() && a.GetFirstRun() == b.GetFirstRun() &&
           a.GetFilterOn() == b.GetFilterOn() && a.GetAutoUpgrade() == b.GetAutoUpgrade() &&
           a.GetShowCloseWindow() == b.GetShowCloseWindow() &&
           a.GetUpgradePeriod() == b.GetUpgradePeriod() &&
           a.GetHistoryDays() == b.GetHistoryDays() && a.GetConfigPath() == b.GetConfigPath() &&
           a.GetLanguage() == b.GetLanguage();
}

bool Same(const enumMSG_REINSTALL_LSP_Message& a, const enumMSG_REINSTALL_LSP_Message& b) {
    return a.GetFile() == b.GetFile() && a.GetParameters() == b.GetParameters() &&
           a.GetFolder() == b.GetFolder();
}

bool Same(const enumMSG_FAILED_TO_LOAD_LSP_Message& a,
          const enumMSG_FAILED_TO_LOAD_LSP_Message& b) {
    return a.GetComponentName() == b.GetComponentName();
}

bool Same(const enumMSG_TRAY_ANIMATION_Message& a, const enumMSG_TRAY_ANIMATION_Message& b) {
    return a.GetAnimation() == b.GetAnimation();
}

// Parses `xml` into a fresh message, then checks that the message survives a second trip
// both as an inbound call and as a reply.
template <class Message>
void RoundTrip(const stdstr& xml) {
    Message first;
    CMessageEnvelope reader;
    reader.Parse(first, xml);

    CMessageEnvelope writer;
    const stdstr again = writer.Serialize(first);
    Require(ReadMessageId(again) == static_cast<std::int32_t>(Message::Id));

    Message second;
    CMessageEnvelope inbound;
    inbound.Parse(second, again);
    Require(Same(first, second));

    const std::string bytes = TransportText::RequestBytes(again);
    Message third;
    CMessageEnvelope reply;
    Require(reply.ParseChecked(third, bytes.data(), static_cast<std::uint32_t>(bytes.size())));
    Require(Same(first, third));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > (1u << 16))
        return 0;
    const stdstr xml = TransportText::InboundText(data, static_cast<std::uint32_t>(size));
    Require(xml.size() == size / 2);

    RecordingMessage recording;
    CMessageEnvelope envelope;
    envelope.Parse(recording, xml);
    Require(recording.calls == 1);
    Require(recording.cursor == 0);
    // The inner text is decoded text: it ends at the first zero byte.
    Require(recording.inner.find(u'\0') == stdstr::npos);

    // The tag search answers as the standard one, from anywhere in the text.
    for (const std::u16string_view tag : {u"<VLE>", u"</VLE>", u"<", u"\u3C3C"}) {
        for (std::size_t from = 0; from <= xml.size(); from += 1 + xml.size() / 16)
            Require(FindText(xml, tag, from) == xml.find(tag, from));
    }

    const std::int32_t id = ReadMessageId(xml);
    Require(id >= 0 && id < 1024);

    RoundTrip<enumMSG_CONFIG_CHANGE_Message>(xml);
    RoundTrip<enumMSG_REINSTALL_LSP_Message>(xml);
    RoundTrip<enumMSG_FAILED_TO_LOAD_LSP_Message>(xml);
    RoundTrip<enumMSG_TRAY_ANIMATION_Message>(xml);
    return 0;
}
