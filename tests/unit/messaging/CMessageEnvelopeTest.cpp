// The message envelope: the exact XML text it writes, and what its reader makes of texts
// that are whole, cut short, doctored or plain wrong.
#include "messaging/CMessageEnvelope.h"

#include "messaging/EnvelopeIds.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"

#include "foundation/Base64.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace MessageTestSupport;

namespace {

// Every character of the fixed parts, spelled out here rather than taken from the
// constants, so that a change to a constant shows.
constexpr const char16_t* Prologue =
    uR"(<?xml version="1.0"?><soap:Envelope xmlns:soap="http://www.w3.org/2001/12/soap-envelope" )"
    uR"(soap:encodingStyle="http://www.w3.org/2001/12/soap-encoding"><soap:Header>)"
    uR"(<em:MsgHeader xmlns:em="http://quillgate.velloran.example/EM/Hreader">)";
constexpr const char16_t* Middle =
    uR"(</em:MsgHeader></soap:Header><soap:Body>)"
    uR"(<em:MsgBody xmlns:em="http://quillgate.velloran.example/EM/Body">)";
constexpr const char16_t* Epilogue = uR"(</em:MsgBody></soap:Body></soap:Envelope>)";

stdstr Whole(std::u16string_view header, std::u16string_view body) {
    return stdstr(Prologue) + stdstr(header) + stdstr(Middle) + stdstr(body) + stdstr(Epilogue);
}

// An envelope text with the given VLID value and the body element of "<VLE>1</VLE>".
stdstr WithId(std::u16string_view id) {
    return Whole(stdstr(u"<VLVS>1.0.0</VLVS><VLID>") + stdstr(id) +
                     stdstr(u"</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Filter status</VLNAME>"),
                 u"<VLR><VLE>PFZMRT4xPC9WTEU+</VLE></VLR>");
}

// The body element with the given base64 text.
stdstr BodyElement(std::u16string_view base64) {
    return stdstr(u"<VLR><VLE>") + stdstr(base64) + stdstr(u"</VLE></VLR>");
}

const stdstr Example3Header = u"<VLVS>1.0.0</VLVS><VLID>258</VLID><VLMSGVer>1.0</VLMSGVer>"
                              u"<VLNAME>Config change</VLNAME>";
const stdstr Example3Body =
    u"<VLR><VLE>PFZMRT4zNDEyPC9WTEU+PFZMRT4xPC9WTEU+PFZMRT4xPC9WTEU+PFZMRT4xPC9WTEU+"
    u"PFZMRT4xPC9WTEU+"
    u"PFZMRT41PC9WTEU+PFZMRT4zMDwvVkxFPjxWTEU+QzpcRGF0YTwvVkxFPjxWTEU+RW5nbGlzaDwvVkxFPg==</VLE>"
    u"</VLR>";

enumMSG_CONFIG_CHANGE_Message Example3Message() {
    enumMSG_CONFIG_CHANGE_Message message;
    message.SetProcessId(3412);
    message.SetFirstRun(1);
    message.SetFilterOn(1);
    message.SetAutoUpgrade(1);
    message.SetShowCloseWindow(1);
    message.SetUpgradePeriod(5);
    message.SetHistoryDays(30);
    message.SetConfigPath(u"C:\\Data");
    message.SetLanguage(u"English");
    return message;
}

// A Config change message whose every field differs from 0 and empty, so that a reader
// that does not touch it, or that sets it to 0, shows.
enumMSG_CONFIG_CHANGE_Message Marked() {
    enumMSG_CONFIG_CHANGE_Message message;
    message.SetProcessId(-11);
    message.SetFirstRun(-12);
    message.SetFilterOn(-13);
    message.SetAutoUpgrade(-14);
    message.SetShowCloseWindow(-15);
    message.SetUpgradePeriod(-16);
    message.SetHistoryDays(-17);
    message.SetConfigPath(u"marked path");
    message.SetLanguage(u"marked language");
    return message;
}

void ExpectFields(const enumMSG_CONFIG_CHANGE_Message& m,
                  std::initializer_list<std::int32_t> integers, std::u16string_view path,
                  std::u16string_view language) {
    const std::vector<std::int32_t> expected(integers);
    const std::vector<std::int32_t> actual{
        m.GetProcessId(),       m.GetFirstRun(),      m.GetFilterOn(),   m.GetAutoUpgrade(),
        m.GetShowCloseWindow(), m.GetUpgradePeriod(), m.GetHistoryDays()};
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(m.GetConfigPath(), path);
    EXPECT_EQ(m.GetLanguage(), language);
}

void ExpectZeroes(const enumMSG_CONFIG_CHANGE_Message& m) {
    ExpectFields(m, {0, 0, 0, 0, 0, 0, 0}, u"", u"");
}

void ExpectExample3(const enumMSG_CONFIG_CHANGE_Message& m) {
    ExpectFields(m, {3412, 1, 1, 1, 1, 5, 30}, u"C:\\Data", u"English");
}

void ExpectMarked(const enumMSG_CONFIG_CHANGE_Message& m) {
    ExpectFields(m, {-11, -12, -13, -14, -15, -16, -17}, u"marked path", u"marked language");
}

// A message that records what its reader was given, for the envelope's side of ReadBody.
class RecordingMessage : public IMessage {
public:
    explicit RecordingMessage(std::uint32_t id) : m_id(id) {}
    stdstr& WriteBody(stdstr& out, CMessageEnvelope&) const override {
        out = u"<VLE>recorded</VLE>";
        return out;
    }
    void ReadBody(const stdstr& text, CMessageEnvelope& env) override {
        ++calls;
        innerText = text;
        cursorAtRead = env.GetCursor();
    }
    std::uint32_t GetId() const override { return m_id; }
    const char16_t* GetName() const override { return u"Recording"; }

    int calls = 0;
    stdstr innerText;
    std::uint32_t cursorAtRead = 12345;

private:
    std::uint32_t m_id;
};

bool ParseCheckedText(IMessage& message, const stdstr& xml) {
    const std::string bytes = TransportText::RequestBytes(xml);
    CMessageEnvelope envelope;
    return envelope.ParseChecked(message, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

} // namespace

// Worked examples, to the character.

TEST(MessageEnvelope, WritesAPingAsTheProtocolShowsIt) {
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(enumMSG_PING_Message());
    EXPECT_EQ(
        xml,
        uR"(<?xml version="1.0"?><soap:Envelope xmlns:soap="http://www.w3.org/2001/12/soap-envelope" soap:encodingStyle="http://www.w3.org/2001/12/soap-encoding"><soap:Header><em:MsgHeader xmlns:em="http://quillgate.velloran.example/EM/Hreader"><VLVS>1.0.0</VLVS><VLID>272</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>PING</VLNAME></em:MsgHeader></soap:Header><soap:Body><em:MsgBody xmlns:em="http://quillgate.velloran.example/EM/Body"><VLR><VLE></VLE></VLR></em:MsgBody></soap:Body></soap:Envelope>)");
}

TEST(MessageEnvelope, WritesFilterOnAsTheProtocolShowsIt) {
    enumMSG_FILTER_CHANGE_Message message;
    message.SetFilterState(1);
    CMessageEnvelope envelope;
    EXPECT_EQ(
        envelope.Serialize(message),
        uR"(<?xml version="1.0"?><soap:Envelope xmlns:soap="http://www.w3.org/2001/12/soap-envelope" soap:encodingStyle="http://www.w3.org/2001/12/soap-encoding"><soap:Header><em:MsgHeader xmlns:em="http://quillgate.velloran.example/EM/Hreader"><VLVS>1.0.0</VLVS><VLID>257</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Filter status</VLNAME></em:MsgHeader></soap:Header><soap:Body><em:MsgBody xmlns:em="http://quillgate.velloran.example/EM/Body"><VLR><VLE>PFZMRT4xPC9WTEU+</VLE></VLR></em:MsgBody></soap:Body></soap:Envelope>)");
}

TEST(MessageEnvelope, WritesAConfigChangeAsTheProtocolShowsIt) {
    CMessageEnvelope envelope;
    EXPECT_EQ(
        envelope.Serialize(Example3Message()),
        uR"(<?xml version="1.0"?><soap:Envelope xmlns:soap="http://www.w3.org/2001/12/soap-envelope" soap:encodingStyle="http://www.w3.org/2001/12/soap-encoding"><soap:Header><em:MsgHeader xmlns:em="http://quillgate.velloran.example/EM/Hreader"><VLVS>1.0.0</VLVS><VLID>258</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Config change</VLNAME></em:MsgHeader></soap:Header><soap:Body><em:MsgBody xmlns:em="http://quillgate.velloran.example/EM/Body"><VLR><VLE>PFZMRT4zNDEyPC9WTEU+PFZMRT4xPC9WTEU+PFZMRT4xPC9WTEU+PFZMRT4xPC9WTEU+PFZMRT4xPC9WTEU+PFZMRT41PC9WTEU+PFZMRT4zMDwvVkxFPjxWTEU+QzpcRGF0YTwvVkxFPjxWTEU+RW5nbGlzaDwvVkxFPg==</VLE></VLR></em:MsgBody></soap:Body></soap:Envelope>)");
}

TEST(MessageEnvelope, WritesTheConfigChangeInnerTextAsTheProtocolShowsIt) {
    EXPECT_EQ(BodyOf(Example3Message()),
              u"<VLE>3412</VLE><VLE>1</VLE><VLE>1</VLE><VLE>1</VLE><VLE>1</VLE><VLE>5</VLE>"
              u"<VLE>30</VLE><VLE>C:\\Data</VLE><VLE>English</VLE>");
}

TEST(MessageEnvelope, ReadsTheWorkedConfigChangeBackAsAReply) {
    auto reply = Marked();
    EXPECT_TRUE(ParseCheckedText(reply, Whole(Example3Header, Example3Body)));
    ExpectExample3(reply);
}

TEST(MessageEnvelope, ReadsTheWorkedFilterChangeBackAsAnInboundCall) {
    const stdstr xml = WithId(u"257");
    const std::string bytes = Utf16LeBytes(xml);
    enumMSG_FILTER_CHANGE_Message message;
    CMessageEnvelope envelope;
    envelope.Parse(message, TransportText::InboundText(bytes.data(),
                                                       static_cast<std::uint32_t>(bytes.size())));
    EXPECT_EQ(message.GetFilterState(), 1);
}

TEST(MessageEnvelope, WritesTheSameTextTwiceForTheSameMessage) {
    CMessageEnvelope envelope;
    const auto message = Example3Message();
    const stdstr first = envelope.Serialize(message);
    const stdstr second = envelope.Serialize(message);
    EXPECT_EQ(first, second);
    EXPECT_EQ(CMessageEnvelope().Serialize(message), first);
}

TEST(MessageEnvelope, WritesEveryClassWithItsIdAndNameInTheHeader) {
    const std::vector<std::pair<std::unique_ptr<IMessage>, std::u16string>> all = [] {
        std::vector<std::pair<std::unique_ptr<IMessage>, std::u16string>> v;
        v.emplace_back(std::make_unique<enumMSG_TRAY_ANIMATION_Message>(),
                       u"<VLID>256</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Tray Animation</VLNAME>");
        v.emplace_back(std::make_unique<enumMSG_FILTER_CHANGE_Message>(),
                       u"<VLID>257</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Filter status</VLNAME>");
        v.emplace_back(std::make_unique<enumMSG_CONFIG_CHANGE_Message>(),
                       u"<VLID>258</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Config change</VLNAME>");
        v.emplace_back(
            std::make_unique<enumMSG_FAILED_TO_LOAD_LSP_Message>(),
            u"<VLID>260</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Failed to load LSP</VLNAME>");
        v.emplace_back(std::make_unique<enumMSG_GUI_START_Message>(),
                       u"<VLID>262</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>GUI Start</VLNAME>");
        v.emplace_back(std::make_unique<enumMSG_LSP_ERROR_Message>(),
                       u"<VLID>263</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>LSP Error</VLNAME>");
        v.emplace_back(std::make_unique<enumMSG_REINSTALL_LSP_Message>(),
                       u"<VLID>264</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>Reinstall LSP</VLNAME>");
        v.emplace_back(std::make_unique<enumMSG_PING_Message>(),
                       u"<VLID>272</VLID><VLMSGVer>1.0</VLMSGVer><VLNAME>PING</VLNAME>");
        return v;
    }();
    for (const auto& [message, header] : all) {
        CMessageEnvelope envelope;
        const stdstr xml = envelope.Serialize(*message);
        EXPECT_TRUE(xml.starts_with(stdstr(Prologue) + u"<VLVS>1.0.0</VLVS>" + header + Middle))
            << stdstr::fromTString(xml);
        EXPECT_TRUE(xml.ends_with(stdstr(u"</VLE></VLR>") + Epilogue));
    }
}

TEST(MessageEnvelope, PutsTheInnerTextAsUtf8UnderBase64) {
    enumMSG_FAILED_TO_LOAD_LSP_Message message;
    message.SetComponentName(u"\u00E9\U0001F600");
    CMessageEnvelope envelope;
    const stdstr xml = envelope.Serialize(message);
    // "<VLE>" C3 A9 F0 9F 98 80 "</VLE>" in base64.
    EXPECT_NE(xml.find(u"<VLR><VLE>PFZMRT7DqfCfmIA8L1ZMRT4=</VLE></VLR>"), stdstr::npos)
        << stdstr::fromTString(xml);
}

// What the reader does with texts that are not as written.

TEST(MessageEnvelope, FindsNothingAtAllInATextWithoutAVersionElement) {
    stdstr xml = Whole(Example3Header, Example3Body);
    xml.erase(xml.find(u"<VLVS>"), 6);
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, xml);
    ExpectZeroes(message);
}

TEST(MessageEnvelope, MovesTheCursorToTheEndWhenTheVersionIsMissing) {
    const stdstr xml = Whole(u"<VLID>258</VLID><VLNAME>Config change</VLNAME>", Example3Body);
    CMessageEnvelope envelope;
    stdstr out(u"old");
    envelope.ExtractElement(out, xml, u"<VLVS>", u"</VLVS>");
    EXPECT_EQ(out, u"");
    EXPECT_EQ(envelope.GetCursor(), xml.size());
}

TEST(MessageEnvelope, ReadsTheRestWhenTheVersionElementIsNotClosed) {
    stdstr xml = Whole(Example3Header, Example3Body);
    xml.erase(xml.find(u"</VLVS>"), 7);
    CMessageEnvelope envelope;
    stdstr out(u"old");
    envelope.ExtractElement(out, xml, u"<VLVS>", u"</VLVS>");
    EXPECT_EQ(out, u"");
    EXPECT_EQ(envelope.GetCursor(), 0u);

    auto message = Marked();
    envelope.Parse(message, xml);
    ExpectExample3(message);
}

TEST(MessageEnvelope, GivesZeroesForABodyElementThatIsNotClosed) {
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, Whole(Example3Header, u"<VLR><VLE>PFZMRT4zNDEyPC9WTEU+</VLR>"));
    ExpectZeroes(message);
}

TEST(MessageEnvelope, GivesZeroesWhenTheNameElementIsMissing) {
    // The body is searched behind the name, and a missing name moves the cursor to the end.
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, Whole(u"<VLVS>1.0.0</VLVS><VLID>258</VLID>", Example3Body));
    ExpectZeroes(message);
}

TEST(MessageEnvelope, DoesNotLookForTheResultElement) {
    stdstr body = Example3Body;
    body.erase(body.find(u"<VLR>"), 5);
    body.erase(body.find(u"</VLR>"), 6);
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, Whole(Example3Header, body));
    ExpectExample3(message);
}

TEST(MessageEnvelope, TakesTheFirstElementBehindTheNameForTheBody) {
    const stdstr xml = u"<VLE>Ignored</VLE><VLVS>1.0.0</VLVS><VLNAME>x</VLNAME>garbage"
                       u"<VLE>PFZMRT4xPC9WTEU+</VLE><VLE>PFZMRT4yPC9WTEU+</VLE>";
    enumMSG_FILTER_CHANGE_Message message;
    CMessageEnvelope envelope;
    envelope.Parse(message, xml);
    EXPECT_EQ(message.GetFilterState(), 1);
}

TEST(MessageEnvelope, RejectsIdsOutsideOneTo1023) {
    for (const char16_t* id :
         {u"0", u"-1", u"-257", u"1024", u"4096", u"word", u"", u"99999999999"}) {
        SCOPED_TRACE(stdstr::fromTString(id));
        const stdstr xml = WithId(id);
        EXPECT_EQ(ReadMessageId(xml), 0);
        enumMSG_FILTER_CHANGE_Message reply;
        reply.SetFilterState(-5);
        EXPECT_FALSE(ParseCheckedText(reply, xml));
        EXPECT_EQ(reply.GetFilterState(), -5);
    }
}

TEST(MessageEnvelope, AcceptsId1023AsAReply) {
    const stdstr xml = WithId(u"1023");
    EXPECT_EQ(ReadMessageId(xml), 1023);
    RecordingMessage reply(1023);
    EXPECT_TRUE(ParseCheckedText(reply, xml));
    EXPECT_EQ(reply.calls, 1);
    EXPECT_EQ(reply.innerText, u"<VLE>1</VLE>");
}

TEST(MessageEnvelope, LeavesAReplyOfAnotherIdAsTheCallerBuiltIt) {
    CMessageEnvelope writer;
    const stdstr xml = writer.Serialize(Example3Message());
    enumMSG_GUI_START_Message reply;
    reply.SetProcessId(77);
    EXPECT_FALSE(ParseCheckedText(reply, xml));
    EXPECT_EQ(reply.GetProcessId(), 77);

    RecordingMessage recording(257);
    EXPECT_FALSE(ParseCheckedText(recording, xml));
    EXPECT_EQ(recording.calls, 0);
}

TEST(MessageEnvelope, ParsesATextOfAnotherClassAsIfItWereItsOwn) {
    CMessageEnvelope writer;
    const stdstr xml = writer.Serialize(Example3Message());
    enumMSG_GUI_START_Message message;
    CMessageEnvelope reader;
    reader.Parse(message, xml);
    EXPECT_EQ(message.GetProcessId(), 3412);

    enumMSG_REINSTALL_LSP_Message texts;
    reader.Parse(texts, xml);
    EXPECT_EQ(texts.GetFile(), u"3412");
    EXPECT_EQ(texts.GetParameters(), u"1");
    EXPECT_EQ(texts.GetFolder(), u"1");
}

TEST(MessageEnvelope, HandsAnEmptyInnerTextToTheMessageForAnEmptyElement) {
    CMessageEnvelope writer;
    for (const stdstr& xml : {writer.Serialize(enumMSG_PING_Message()),
                              writer.Serialize(enumMSG_LSP_ERROR_Message())}) {
        RecordingMessage message(272);
        message.innerText = u"not yet read";
        CMessageEnvelope reader;
        reader.Parse(message, xml);
        EXPECT_EQ(message.calls, 1);
        EXPECT_EQ(message.innerText, u"");
    }
}

TEST(MessageEnvelope, CallsTheReaderWithTheCursorAtZero) {
    CMessageEnvelope writer;
    const stdstr xml = writer.Serialize(Example3Message());
    RecordingMessage message(258);
    CMessageEnvelope reader;
    reader.SetCursor(40);
    reader.Parse(message, xml);
    EXPECT_EQ(message.cursorAtRead, 0u);
    EXPECT_EQ(message.innerText,
              u"<VLE>3412</VLE><VLE>1</VLE><VLE>1</VLE><VLE>1</VLE><VLE>1</VLE><VLE>5</VLE>"
              u"<VLE>30</VLE><VLE>C:\\Data</VLE><VLE>English</VLE>");
}

TEST(MessageEnvelope, GivesZeroOrEmptyForFieldsMissingFromTheInnerText) {
    // "<VLE>7</VLE><VLE>8</VLE>"
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message,
                   Whole(Example3Header, BodyElement(u"PFZMRT43PC9WTEU+PFZMRT44PC9WTEU+")));
    ExpectFields(message, {7, 8, 0, 0, 0, 0, 0}, u"", u"");
}

TEST(MessageEnvelope, IgnoresElementsBeyondTheFieldsOfTheClass) {
    CMessageEnvelope writer;
    const stdstr xml = writer.Serialize(Example3Message());
    enumMSG_FILTER_CHANGE_Message message;
    CMessageEnvelope reader;
    reader.Parse(message, xml);
    EXPECT_EQ(message.GetFilterState(), 3412);
}

TEST(MessageEnvelope, CarriesNonAsciiTextUnchanged) {
    auto sent = Example3Message();
    sent.SetConfigPath(u"C:\\Users\\J\u00FCrgen\\\u65E5\u672C");
    sent.SetLanguage(u"\u0420\u0443\u0441\u0441\u043A\u0438\u0439 \U0001F600");
    const auto received = ThroughReply(sent);
    EXPECT_EQ(received.GetConfigPath(), sent.GetConfigPath());
    EXPECT_EQ(received.GetLanguage(), sent.GetLanguage());
}

TEST(MessageEnvelope, CarriesLessThanAndAmpersandUnescaped) {
    enumMSG_FAILED_TO_LOAD_LSP_Message sent;
    sent.SetComponentName(u"<b> & </b> &amp;");
    EXPECT_EQ(BodyOf(sent), u"<VLE><b> & </b> &amp;</VLE>");
    EXPECT_EQ(ThroughReply(sent).GetComponentName(), u"<b> & </b> &amp;");
}

TEST(MessageEnvelope, CutsAStringFieldAtTheElementCloseTag) {
    enumMSG_FAILED_TO_LOAD_LSP_Message sent;
    sent.SetComponentName(u"before</VLE>after");
    EXPECT_EQ(ThroughReply(sent).GetComponentName(), u"before");
}

TEST(MessageEnvelope, SkipsAPlusAndBlankBeforeTheBase64) {
    stdstr xml = WithId(u"257");
    xml.insert(xml.find(u"PFZM"), u"+ ");
    enumMSG_FILTER_CHANGE_Message message;
    CMessageEnvelope envelope;
    envelope.Parse(message, xml);
    EXPECT_EQ(message.GetFilterState(), 1);
}

TEST(MessageEnvelope, DecodesTheBase64UpToACarriageReturn) {
    // "<VLE>5</VLE>" then a carriage return, then "<VLE>9</VLE>".
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message,
                   Whole(Example3Header, BodyElement(u"PFZMRT41PC9WTEU+\rPFZMRT45PC9WTEU+")));
    ExpectFields(message, {5, 0, 0, 0, 0, 0, 0}, u"", u"");
}

TEST(MessageEnvelope, DecodesNothingFromBase64ThatStartsWithACarriageReturn) {
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, Whole(Example3Header, BodyElement(u"\rPFZMRT41PC9WTEU+")));
    ExpectZeroes(message);
}

TEST(MessageEnvelope, KeepsWhatWasDecodedBeforeABadBase64Character) {
    // "<VLE>5</VLE>" and then a character outside the alphabet: the groups before it count,
    // the zero-filled rest reads as the end of the text.
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message,
                   Whole(Example3Header, BodyElement(u"PFZMRT41PC9WTEU+PF*MRT45PC9WTEU+")));
    ExpectFields(message, {5, 0, 0, 0, 0, 0, 0}, u"", u"");

    auto nonAscii = Marked();
    envelope.Parse(nonAscii,
                   Whole(Example3Header, BodyElement(u"PFZMRT41PC9WTEU+\u00E9FZMRT45PC9WTEU+")));
    ExpectFields(nonAscii, {5, 0, 0, 0, 0, 0, 0}, u"", u"");
}

TEST(MessageEnvelope, ReadsTheLeadingNumberOfAnIntegerElement) {
    // "<VLE>12abc</VLE><VLE>abc</VLE><VLE> -4x</VLE>"
    ByteArray encoded;
    Base64Encode(ByteArray(stdstr(u"<VLE>12abc</VLE><VLE>abc</VLE><VLE> -4x</VLE>")), encoded);
    const stdstr base64 = encoded.toString();
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, Whole(Example3Header, BodyElement(base64)));
    ExpectFields(message, {12, 0, -4, 0, 0, 0, 0}, u"", u"");
}

TEST(MessageEnvelope, SurvivesEveryPrefixOfAMessage) {
    // Cut anywhere, a text either still holds the whole body element, or yields a message of
    // zeroes; and it passes the id check exactly when the id element is whole.
    CMessageEnvelope writer;
    const stdstr xml = writer.Serialize(Example3Message());
    const std::size_t bodyEnd = xml.find(u"</VLE></VLR>") + 6;
    const std::size_t idEnd = xml.find(u"</VLID>") + 7;
    for (std::size_t length = 0; length <= xml.size(); ++length) {
        SCOPED_TRACE(length);
        const stdstr prefix = xml.substr(0, length);
        auto message = Marked();
        CMessageEnvelope reader;
        reader.Parse(message, prefix);
        if (length >= bodyEnd)
            ExpectExample3(message);
        else
            ExpectZeroes(message);

        auto reply = Marked();
        const bool accepted = ParseCheckedText(reply, prefix);
        EXPECT_EQ(accepted, length >= idEnd);
        if (!accepted)
            ExpectMarked(reply);
    }
}

TEST(MessageEnvelope, ReadsAReplyUpToAnEmbeddedZeroByte) {
    CMessageEnvelope writer;
    std::string bytes = TransportText::RequestBytes(writer.Serialize(Example3Message()));
    const std::size_t nameAt = bytes.find("<VLNAME>");
    std::string cut = bytes;
    cut[nameAt] = '\0';
    auto reply = Marked();
    CMessageEnvelope reader;
    EXPECT_TRUE(reader.ParseChecked(reply, cut.data(), static_cast<std::uint32_t>(cut.size())));
    ExpectZeroes(reply);

    cut = bytes;
    cut[bytes.find("<VLID>")] = '\0';
    auto untouched = Marked();
    EXPECT_FALSE(
        reader.ParseChecked(untouched, cut.data(), static_cast<std::uint32_t>(cut.size())));
    ExpectMarked(untouched);
}

TEST(MessageEnvelope, ReadsOnlyTheGivenLengthOfAReply) {
    CMessageEnvelope writer;
    const std::string bytes = TransportText::RequestBytes(writer.Serialize(Example3Message()));
    const std::string longer = bytes + "<VLID>999</VLID>";
    auto reply = Marked();
    CMessageEnvelope reader;
    EXPECT_TRUE(
        reader.ParseChecked(reply, longer.data(), static_cast<std::uint32_t>(bytes.size())));
    ExpectExample3(reply);
}

TEST(MessageEnvelope, RefusesAnEmptyOrMissingReply) {
    auto reply = Marked();
    CMessageEnvelope envelope;
    EXPECT_FALSE(envelope.ParseChecked(reply, nullptr, 100));
    EXPECT_FALSE(envelope.ParseChecked(reply, "", 0));
    ExpectMarked(reply);
}

TEST(MessageEnvelope, ReadsAReplyWithBrokenUtf8OutsideTheElements) {
    std::string bytes =
        TransportText::RequestBytes(CMessageEnvelope().Serialize(Example3Message()));
    bytes.insert(bytes.find("<soap:Body>"), "\xFF\xC3(\xED\xA0\x80");
    auto reply = Marked();
    CMessageEnvelope envelope;
    EXPECT_TRUE(
        envelope.ParseChecked(reply, bytes.data(), static_cast<std::uint32_t>(bytes.size())));
    ExpectExample3(reply);
}

TEST(MessageEnvelope, FindsNothingInARequestReadAsAnInboundCall) {
    // The two transport forms are not interchangeable: UTF-8 bytes taken as UTF-16 units
    // hold none of the tags.
    const std::string bytes =
        TransportText::RequestBytes(CMessageEnvelope().Serialize(Example3Message()));
    auto message = Marked();
    CMessageEnvelope envelope;
    envelope.Parse(message, TransportText::InboundText(bytes.data(),
                                                       static_cast<std::uint32_t>(bytes.size())));
    ExpectZeroes(message);
}

// The scanning primitive and the element writers.

TEST(MessageEnvelopeExtractElement, ReturnsTheTextBetweenTheTagsAndMovesBehindTheCloseTag) {
    const std::u16string_view text = u"xx<A>value</A>yy";
    CMessageEnvelope envelope;
    stdstr out;
    EXPECT_EQ(envelope.ExtractElement(out, text, u"<A>", u"</A>"), u"value");
    EXPECT_EQ(out, u"value");
    EXPECT_EQ(envelope.GetCursor(), 14u);
}

TEST(MessageEnvelopeExtractElement, SearchesFromTheCursor) {
    const std::u16string_view text = u"<A>1</A><A>2</A>";
    CMessageEnvelope envelope;
    stdstr out;
    envelope.SetCursor(1);
    EXPECT_EQ(envelope.ExtractElement(out, text, u"<A>", u"</A>"), u"2");
    EXPECT_EQ(envelope.GetCursor(), 16u);
    EXPECT_EQ(envelope.ExtractElement(out, text, u"<A>", u"</A>"), u"");
    EXPECT_EQ(envelope.GetCursor(), 16u);
}

TEST(MessageEnvelopeExtractElement, MovesToTheEndWhenTheOpenTagIsMissing) {
    const std::u16string_view text = u"no tags here";
    CMessageEnvelope envelope;
    stdstr out(u"old");
    EXPECT_EQ(envelope.ExtractElement(out, text, u"<A>", u"</A>"), u"");
    EXPECT_EQ(out, u"");
    EXPECT_EQ(envelope.GetCursor(), 12u);
}

TEST(MessageEnvelopeExtractElement, StaysWhenTheOpenTagEndsTheText) {
    CMessageEnvelope envelope;
    envelope.SetCursor(2);
    stdstr out(u"old");
    EXPECT_EQ(envelope.ExtractElement(out, u"abc<A>", u"<A>", u"</A>"), u"");
    EXPECT_EQ(envelope.GetCursor(), 2u);
    // Even a close tag that would be found anywhere does not count behind the end.
    EXPECT_EQ(envelope.ExtractElement(out, u"abc<A>", u"<A>", u""), u"");
    EXPECT_EQ(envelope.GetCursor(), 2u);
}

TEST(MessageEnvelopeExtractElement, StaysWhenTheCloseTagIsMissing) {
    CMessageEnvelope envelope;
    envelope.SetCursor(1);
    stdstr out(u"old");
    EXPECT_EQ(envelope.ExtractElement(out, u"a<A>value", u"<A>", u"</A>"), u"");
    EXPECT_EQ(envelope.GetCursor(), 1u);
}

TEST(MessageEnvelopeExtractElement, ReturnsAnEmptyElementAsEmpty) {
    CMessageEnvelope envelope;
    stdstr out(u"old");
    EXPECT_EQ(envelope.ExtractElement(out, u"<A></A>", u"<A>", u"</A>"), u"");
    EXPECT_EQ(envelope.GetCursor(), 7u);
}

TEST(MessageEnvelopeExtractElement, CopesWithACursorBeyondTheText) {
    CMessageEnvelope envelope;
    envelope.SetCursor(1000);
    stdstr out(u"old");
    EXPECT_EQ(envelope.ExtractElement(out, u"<A>x</A>", u"<A>", u"</A>"), u"");
    EXPECT_EQ(envelope.GetCursor(), 8u);
}

TEST(MessageEnvelopeExtractElement, MayReadFromTheStringItWritesTo) {
    CMessageEnvelope envelope;
    stdstr text(u"<A>inner</A>");
    envelope.ExtractElement(text, text, u"<A>", u"</A>");
    EXPECT_EQ(text, u"inner");
}

TEST(MessageEnvelopePut, AppendsElementsWithTheElementTags) {
    CMessageEnvelope envelope;
    stdstr out(u"start:");
    envelope.PutString(u"a<&>\"b", out);
    envelope.PutInt(-2147483647 - 1, out);
    envelope.PutInt(2147483647, out);
    envelope.PutString(u"", out);
    EXPECT_EQ(out, u"start:<VLE>a<&>\"b</VLE><VLE>-2147483648</VLE><VLE>2147483647</VLE>"
                   u"<VLE></VLE>");
}

TEST(MessageEnvelopePut, AppendsTaggedValuesWithTheGivenTags) {
    CMessageEnvelope envelope;
    stdstr out;
    envelope.PutTagged(u"text", out, u"<T>", u"</T>");
    envelope.PutTaggedInt(-9, out, u"<N>", u"</N>");
    envelope.PutTaggedInt(0, out, u"", u"");
    EXPECT_EQ(out, u"<T>text</T><N>-9</N>0");
}

TEST(MessageEnvelopeGet, ReadsElementsInOrderFromTheCursor) {
    CMessageEnvelope envelope;
    const std::u16string_view text = u"<VLE>-2147483648</VLE><VLE>word</VLE><VLE>2147483647</VLE>";
    EXPECT_EQ(envelope.GetInt(text), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(envelope.GetString(text), u"word");
    EXPECT_EQ(envelope.GetInt(text), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(envelope.GetInt(text), 0);
    EXPECT_EQ(envelope.GetString(text), u"");
}
