// The Config change message: seven integers and two texts, in the order of the settings.
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

namespace {

enumMSG_CONFIG_CHANGE_Message Filled(std::int32_t first, const stdstr& path,
                                     const stdstr& language) {
    enumMSG_CONFIG_CHANGE_Message message;
    // Each field a different value, without overflow at either end of the range.
    message.SetProcessId(first);
    message.SetFirstRun(~first);
    message.SetFilterOn(first ^ 0x5A5A);
    message.SetAutoUpgrade(first / 2);
    message.SetShowCloseWindow(first % 1000);
    message.SetUpgradePeriod(first / -3);
    message.SetHistoryDays(first % 7);
    message.SetConfigPath(path);
    message.SetLanguage(language);
    return message;
}

void ExpectSameFields(const enumMSG_CONFIG_CHANGE_Message& actual,
                      const enumMSG_CONFIG_CHANGE_Message& expected) {
    EXPECT_EQ(actual.GetProcessId(), expected.GetProcessId());
    EXPECT_EQ(actual.GetFirstRun(), expected.GetFirstRun());
    EXPECT_EQ(actual.GetFilterOn(), expected.GetFilterOn());
    EXPECT_EQ(actual.GetAutoUpgrade(), expected.GetAutoUpgrade());
    EXPECT_EQ(actual.GetShowCloseWindow(), expected.GetShowCloseWindow());
    EXPECT_EQ(actual.GetUpgradePeriod(), expected.GetUpgradePeriod());
    EXPECT_EQ(actual.GetHistoryDays(), expected.GetHistoryDays());
    EXPECT_EQ(actual.GetConfigPath(), expected.GetConfigPath());
    EXPECT_EQ(actual.GetLanguage(), expected.GetLanguage());
}

} // namespace

TEST(ConfigChangeMessage, HasId258AndTheNameConfigChange) {
    const enumMSG_CONFIG_CHANGE_Message message;
    EXPECT_EQ(message.GetId(), 258u);
    EXPECT_EQ(std::u16string(message.GetName()), u"Config change");
}

TEST(ConfigChangeMessage, StartsWithZeroesAndEmptyTexts) {
    const enumMSG_CONFIG_CHANGE_Message message;
    EXPECT_EQ(message.GetProcessId(), 0);
    EXPECT_EQ(message.GetFirstRun(), 0);
    EXPECT_EQ(message.GetFilterOn(), 0);
    EXPECT_EQ(message.GetAutoUpgrade(), 0);
    EXPECT_EQ(message.GetShowCloseWindow(), 0);
    EXPECT_EQ(message.GetUpgradePeriod(), 0);
    EXPECT_EQ(message.GetHistoryDays(), 0);
    EXPECT_EQ(message.GetConfigPath(), u"");
    EXPECT_EQ(message.GetLanguage(), u"");
}

TEST(ConfigChangeMessage, WritesSevenIntegersAndTwoTextsInSettingsOrder) {
    enumMSG_CONFIG_CHANGE_Message message;
    message.SetProcessId(3412);
    message.SetFirstRun(1);
    message.SetFilterOn(2);
    message.SetAutoUpgrade(3);
    message.SetShowCloseWindow(4);
    message.SetUpgradePeriod(5);
    message.SetHistoryDays(30);
    message.SetConfigPath(u"C:\\Data");
    message.SetLanguage(u"English");
    EXPECT_EQ(BodyOf(message), u"<VLE>3412</VLE><VLE>1</VLE><VLE>2</VLE><VLE>3</VLE><VLE>4</VLE>"
                               u"<VLE>5</VLE><VLE>30</VLE><VLE>C:\\Data</VLE><VLE>English</VLE>");
}

TEST(ConfigChangeMessage, WritesValuesUnescaped) {
    const auto message = Filled(-7, u"a<b&c\"d'", u"\U0001F600");
    EXPECT_EQ(BodyOf(message), u"<VLE>-7</VLE><VLE>6</VLE><VLE>-23133</VLE><VLE>-3</VLE>"
                               u"<VLE>-7</VLE><VLE>2</VLE><VLE>0</VLE><VLE>a<b&c\"d'</VLE>"
                               u"<VLE>\U0001F600</VLE>");
}

TEST(ConfigChangeMessage, ComesBackUnchangedAsAReply) {
    for (const stdstr& text : AwkwardTexts()) {
        for (const std::int32_t number : AwkwardIntegers()) {
            const auto sent = Filled(number, text, stdstr(u"x") + text);
            SCOPED_TRACE(stdstr::fromTString(text) + " " + std::to_string(number));
            ExpectSameFields(ThroughReply(sent), sent);
        }
    }
}

TEST(ConfigChangeMessage, ComesBackUnchangedAsAnInboundCall) {
    for (const stdstr& text : AwkwardTexts()) {
        for (const std::int32_t number : AwkwardIntegers()) {
            const auto sent = Filled(number, stdstr(u"y") + text, text);
            SCOPED_TRACE(stdstr::fromTString(text) + " " + std::to_string(number));
            ExpectSameFields(ThroughInboundCall(sent), sent);
        }
    }
}

TEST(ConfigChangeMessage, KeepsTheExtremesOfEveryIntegerField) {
    enumMSG_CONFIG_CHANGE_Message sent;
    sent.SetProcessId(std::numeric_limits<std::int32_t>::max());
    sent.SetFirstRun(std::numeric_limits<std::int32_t>::min());
    sent.SetFilterOn(std::numeric_limits<std::int32_t>::max());
    sent.SetAutoUpgrade(std::numeric_limits<std::int32_t>::min());
    sent.SetShowCloseWindow(-1);
    sent.SetUpgradePeriod(std::numeric_limits<std::int32_t>::min());
    sent.SetHistoryDays(std::numeric_limits<std::int32_t>::max());
    ExpectSameFields(ThroughReply(sent), sent);
}

TEST(ConfigChangeMessage, ReadsFieldsThatAreMissingAsZeroOrEmpty) {
    auto message = Filled(99, u"old", u"old");
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>12</VLE><VLE>1</VLE>", envelope);
    EXPECT_EQ(message.GetProcessId(), 12);
    EXPECT_EQ(message.GetFirstRun(), 1);
    EXPECT_EQ(message.GetFilterOn(), 0);
    EXPECT_EQ(message.GetAutoUpgrade(), 0);
    EXPECT_EQ(message.GetShowCloseWindow(), 0);
    EXPECT_EQ(message.GetUpgradePeriod(), 0);
    EXPECT_EQ(message.GetHistoryDays(), 0);
    EXPECT_EQ(message.GetConfigPath(), u"");
    EXPECT_EQ(message.GetLanguage(), u"");
}

TEST(ConfigChangeMessage, IgnoresElementsBeyondItsNine) {
    enumMSG_CONFIG_CHANGE_Message message;
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>1</VLE><VLE>2</VLE><VLE>3</VLE><VLE>4</VLE><VLE>5</VLE><VLE>6</VLE>"
                     u"<VLE>7</VLE><VLE>path</VLE><VLE>lang</VLE><VLE>extra</VLE><VLE>10</VLE>",
                     envelope);
    EXPECT_EQ(message.GetProcessId(), 1);
    EXPECT_EQ(message.GetHistoryDays(), 7);
    EXPECT_EQ(message.GetConfigPath(), u"path");
    EXPECT_EQ(message.GetLanguage(), u"lang");
}

TEST(ConfigChangeMessage, CutsAPathThatHoldsTheElementCloseTag) {
    // Nothing is escaped, so the reader takes the first close tag for the end of the field;
    // the rest of that value is passed over in the search for the next open tag.
    const auto sent = Filled(1, u"C:\\a</VLE>b", u"English");
    const auto received = ThroughReply(sent);
    EXPECT_EQ(received.GetConfigPath(), u"C:\\a");
    EXPECT_EQ(received.GetLanguage(), u"English");
}
