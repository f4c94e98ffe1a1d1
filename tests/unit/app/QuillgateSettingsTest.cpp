// The settings: QGConfig.ini in memory, the language and path defaults, the Config change
// that carries them to the service, and the plug-in's set and get codes.

#include "app/QuillgateSettings.h"

#include "RecordingRpc.h"
#include "foundation/Registry.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"
#include "mainwindow/InfoValues.h"
#include "messaging/CMessageEnvelope.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <unistd.h>

namespace {

const char* const ConfigFile = "var/lib/velloran/quillgate/QGConfig.ini";

class QuillgateSettingsTest : public ::testing::Test {
protected:
    void WriteConfig(const std::string& text) { root.writeFile(ConfigFile, text); }

    void SetILang(std::uint32_t id) {
        Corvane::Registry machine(HKEY_LOCAL_MACHINE);
        ASSERT_TRUE(machine.setNumber(u"Software\\Velloran\\Quillgate", u"iLang", id, true));
    }

    stdstr RootPath(const std::string& relative) const {
        return stdstr::toTString(root.file(relative));
    }

    // The Config change of a recorded request, if the request is one.
    static std::optional<enumMSG_CONFIG_CHANGE_Message>
    ConfigChange(const RecordingRpc::Request& request) {
        enumMSG_CONFIG_CHANGE_Message msg;
        CMessageEnvelope envelope;
        if (!envelope.ParseChecked(msg, request.bytes.data(),
                                   static_cast<std::uint32_t>(request.bytes.size())))
            return std::nullopt;
        return msg;
    }

    TestSupport::SandboxRoot root;
};

// What the plug-in's codes reach: the settings, forwarded as the application object does.
class SettingsHost : public IInfoValueHost {
public:
    explicit SettingsHost(QuillgateSettings& settings) : m_settings(settings) {}
    void SetFlagByte(int, std::uint8_t) override {}
    std::int32_t UpdateAction() override { return 0; }
    void SetUpdateAction(std::int32_t) override {}
    std::int32_t GetNumber(Number setting) override { return m_settings.GetNumber(setting); }
    void SetNumber(Number setting, std::int32_t value) override {
        m_settings.SetNumber(setting, value);
    }
    const stdstr& GetText(Text setting) override { return m_settings.GetText(setting); }
    void SetText(Text setting, const stdstr& value) override { m_settings.SetText(setting, value); }
    bool SetFilterState(std::int32_t) override { return true; }
    void RunFreshUpdate(std::int32_t) override {}
    void NotifyService() override { m_settings.NotifyService(); }
    void Command(int) override {}
    bool ReadFileVersion(const stdstr&, std::array<std::uint32_t, 4>&) override { return false; }

private:
    QuillgateSettings& m_settings;
};

} // namespace

TEST_F(QuillgateSettingsTest, AMissingFileGivesEveryDefault) {
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetFirstRun(), 1);
    EXPECT_EQ(settings.GetFilterOn(), 1);
    EXPECT_EQ(settings.GetAutoUpgrade(), 1);
    EXPECT_EQ(settings.GetShowCloseWindow(), 1);
    EXPECT_EQ(settings.GetUpgradePeriod(), 5);
    EXPECT_EQ(settings.GetHistoryDays(), 30);
    EXPECT_EQ(settings.GetConfigPath(), RootPath("var/lib/velloran/quillgate"));
    EXPECT_EQ(settings.GetLanguage(), u"1033");
}

TEST_F(QuillgateSettingsTest, EveryKeyOfTheFileIsRead) {
    WriteConfig("[SYSTEM]\nFirstRun=0\nFilterOn=0\nAutoUpgrade=0\nShowCloseWindow=0\n"
                "UpgradePeriod=9\nHistoryDays=60\nConfigPath=/srv/qg\nLanguage=1036\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetFirstRun(), 0);
    EXPECT_EQ(settings.GetFilterOn(), 0);
    EXPECT_EQ(settings.GetAutoUpgrade(), 0);
    EXPECT_EQ(settings.GetShowCloseWindow(), 0);
    EXPECT_EQ(settings.GetUpgradePeriod(), 9);
    EXPECT_EQ(settings.GetHistoryDays(), 60);
    EXPECT_EQ(settings.GetConfigPath(), u"/srv/qg");
    EXPECT_EQ(settings.GetLanguage(), u"1036");
}

TEST_F(QuillgateSettingsTest, TheFileIsReadWithTheProfileRules) {
    WriteConfig("; the service's file\r\n  [system]  \r\n firstrun = 0 \r\n"
                "HISTORYDAYS=\"45\"\r\nConfigPath = ' /with blanks/ ' \r\nLanguage\r\n"
                "UpgradePeriod=\r\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetFirstRun(), 0);
    EXPECT_EQ(settings.GetHistoryDays(), 45);
    EXPECT_EQ(settings.GetConfigPath(), u" /with blanks/ ");
    // "Language" without '=' is absent; an empty number is the default.
    EXPECT_EQ(settings.GetLanguage(), u"1033");
    EXPECT_EQ(settings.GetUpgradePeriod(), 5);
}

TEST_F(QuillgateSettingsTest, NoLanguageKeyAndNoILangValueGive1033) {
    WriteConfig("[SYSTEM]\nFirstRun=0\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"1033");
}

TEST_F(QuillgateSettingsTest, NoLanguageKeyTakesTheILangValue) {
    SetILang(1031);
    WriteConfig("[SYSTEM]\nFirstRun=0\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"1031");
}

TEST_F(QuillgateSettingsTest, AnEmptyLanguageTakesTheILangValueToo) {
    SetILang(2052);
    WriteConfig("[SYSTEM]\nLanguage=\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"2052");
}

TEST_F(QuillgateSettingsTest, ILangIsWrittenAsASignedNumber) {
    SetILang(0xFFFFFFFFu);
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"-1");
}

TEST_F(QuillgateSettingsTest, ILangThatIsNotANumberValueGives1033) {
    Corvane::Registry machine(HKEY_LOCAL_MACHINE);
    ASSERT_TRUE(machine.setString(u"Software\\Velloran\\Quillgate", u"iLang", u"1031", true));
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"1033");
}

TEST_F(QuillgateSettingsTest, ALanguageInTheFileIsKeptAndTheMachineStoreNotUsed) {
    SetILang(1031);
    WriteConfig("[SYSTEM]\nLanguage=1040\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"1040");
}

TEST_F(QuillgateSettingsTest, ALanguageThatIsNoNumberIsKeptAsItStands) {
    WriteConfig("[SYSTEM]\nLanguage=German\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), u"German");
}

TEST_F(QuillgateSettingsTest, AConfigPathInTheFileIsUsedAsItStands) {
    WriteConfig("[SYSTEM]\nConfigPath=/no/such/folder\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetConfigPath(), u"/no/such/folder");
}

TEST_F(QuillgateSettingsTest, ANonNumericUpgradePeriodReadsZeroAndIsNotClamped) {
    WriteConfig("[SYSTEM]\nUpgradePeriod=weekly\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetUpgradePeriod(), 0);
}

TEST_F(QuillgateSettingsTest, ANegativeHistoryDaysIsStoredAndPassedOn) {
    WriteConfig("[SYSTEM]\nHistoryDays=-5\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    EXPECT_EQ(settings.GetHistoryDays(), -5);
    ASSERT_EQ(rpc.requests.size(), 1u);
    const auto msg = ConfigChange(rpc.requests[0]);
    ASSERT_TRUE(msg);
    EXPECT_EQ(msg->GetHistoryDays(), -5);
}

TEST_F(QuillgateSettingsTest, ALanguageOf200CharactersIsCutTo127) {
    WriteConfig("[SYSTEM]\nLanguage=" + std::string(200, '7') + "\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetLanguage(), stdstr(127, u'7'));
}

TEST_F(QuillgateSettingsTest, AConfigPathOf300CharactersIsCutTo259) {
    WriteConfig("[SYSTEM]\nConfigPath=/" + std::string(299, 'p') + "\n");
    const QuillgateSettings settings;
    EXPECT_EQ(settings.GetConfigPath(), u"/" + stdstr(258, u'p'));
}

TEST_F(QuillgateSettingsTest, AFirstRunOfZeroSendsNothingWhenTheSettingsAreRead) {
    WriteConfig("[SYSTEM]\nFirstRun=0\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    settings.LoadSettings();
    EXPECT_TRUE(rpc.requests.empty());
}

TEST_F(QuillgateSettingsTest, AFirstRunSendsTheSettingsEachTimeTheyAreRead) {
    WriteConfig("[SYSTEM]\nFirstRun=1\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    EXPECT_EQ(rpc.requests.size(), 1u);
    settings.LoadSettings();
    EXPECT_EQ(rpc.requests.size(), 2u);
}

TEST_F(QuillgateSettingsTest, NotifyServiceSendsEveryFieldInOrderToTheSharedServer) {
    WriteConfig("[SYSTEM]\nFirstRun=0\nFilterOn=0\nAutoUpgrade=1\nShowCloseWindow=0\n"
                "UpgradePeriod=3\nHistoryDays=14\nConfigPath=/srv/qg\nLanguage=1053\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    ASSERT_TRUE(rpc.requests.empty());
    EXPECT_TRUE(settings.NotifyService());
    ASSERT_EQ(rpc.requests.size(), 1u);
    EXPECT_EQ(rpc.requests[0].server, u"SharedRPCServer");
    const auto msg = ConfigChange(rpc.requests[0]);
    ASSERT_TRUE(msg);
    EXPECT_EQ(msg->GetProcessId(), static_cast<std::int32_t>(::getpid()));
    EXPECT_EQ(msg->GetFirstRun(), 0);
    EXPECT_EQ(msg->GetFilterOn(), 0);
    EXPECT_EQ(msg->GetAutoUpgrade(), 1);
    EXPECT_EQ(msg->GetShowCloseWindow(), 0);
    EXPECT_EQ(msg->GetUpgradePeriod(), 3);
    EXPECT_EQ(msg->GetHistoryDays(), 14);
    EXPECT_EQ(msg->GetConfigPath(), u"/srv/qg");
    EXPECT_EQ(msg->GetLanguage(), u"1053");
}

TEST_F(QuillgateSettingsTest, NotifyServiceCarriesChangesMadeInMemory) {
    WriteConfig("[SYSTEM]\nFirstRun=0\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    settings.SetFilterOn(0);
    settings.SetLanguage(u"1049");
    settings.NotifyService();
    ASSERT_EQ(rpc.requests.size(), 1u);
    const auto msg = ConfigChange(rpc.requests[0]);
    ASSERT_TRUE(msg);
    EXPECT_EQ(msg->GetFilterOn(), 0);
    EXPECT_EQ(msg->GetLanguage(), u"1049");
}

TEST_F(QuillgateSettingsTest, WithoutAnRpcObjectTheSendPathTracesAndNothingElseHappens) {
    TraceRecorder& trace = TraceRecorder::Instance();
    trace.Clear();
    QuillgateSettings settings; // FirstRun 1 by default: it tries to send
    EXPECT_EQ(trace.Count(TRACE_ERROR, u"m_pRPCExt is null while attempt to send message 258."),
              1u);
    EXPECT_FALSE(settings.NotifyService());
    EXPECT_EQ(settings.GetFirstRun(), 1);
}

TEST_F(QuillgateSettingsTest, ResolveConfigFileNamesAFileOfTheModuleDataFolder) {
    QuillgateSettings settings;
    stdstr path;
    EXPECT_TRUE(settings.ResolveConfigFile(u"other.ini", path));
    EXPECT_EQ(path, RootPath("var/lib/velloran/quillgate/other.ini"));
}

TEST_F(QuillgateSettingsTest, TheModuleDataFolderIsWorkedOutOnceAndKept) {
    WriteConfig("[SYSTEM]\nHistoryDays=11\n");
    QuillgateSettings settings;
    {
        TestSupport::SandboxRoot other;
        other.writeFile(ConfigFile, "[SYSTEM]\nHistoryDays=22\n");
        settings.LoadSettings();
        stdstr path;
        settings.ResolveConfigFile(u"QGConfig.ini", path);
        EXPECT_EQ(path, RootPath(ConfigFile));
    }
    EXPECT_EQ(settings.GetHistoryDays(), 11);
}

TEST_F(QuillgateSettingsTest, WithoutTheCommonDataFolderTheFileIsLookedForBesideTheProgram) {
    // A root below a plain file: its var/lib can neither exist nor be made.
    root.writeFile("plain", "");
    const std::string unusable = root.file("plain/root");
    const char* saved = std::getenv("QUILLGATE_ROOT");
    const std::string savedRoot = saved ? saved : "";
    ::setenv("QUILLGATE_ROOT", unusable.c_str(), 1);
    QuillgateSettings settings;
    stdstr path;
    settings.ResolveConfigFile(u"QGConfig.ini", path);
    ::setenv("QUILLGATE_ROOT", savedRoot.c_str(), 1);
    EXPECT_EQ(path, stdstr::toTString(SystemPaths::ProgramFolder()) + u"/config/QGConfig.ini");
    EXPECT_EQ(settings.GetHistoryDays(), 30);
}

TEST_F(QuillgateSettingsTest, TheTextSettersCopyAtMost259And127CharactersUpToANul) {
    QuillgateSettings settings;
    settings.SetConfigPath(stdstr(400, u'c'));
    EXPECT_EQ(settings.GetConfigPath(), stdstr(259, u'c'));
    settings.SetLanguage(stdstr(128, u'l'));
    EXPECT_EQ(settings.GetLanguage(), stdstr(127, u'l'));
    settings.SetLanguage(stdstr(u"10\0"
                                u"33",
                                5));
    EXPECT_EQ(settings.GetLanguage(), u"10");
}

TEST_F(QuillgateSettingsTest, TheTextsStayWhereTheyAreWhateverIsWritten) {
    QuillgateSettings settings;
    const char16_t* path = settings.GetText(IInfoValueHost::Text::ConfigPath).c_str();
    const char16_t* language = settings.GetText(IInfoValueHost::Text::Language).c_str();
    settings.SetConfigPath(u"x");
    settings.SetConfigPath(stdstr(1000, u'y'));
    settings.SetLanguage(stdstr(500, u'z'));
    settings.SetLanguage(u"");
    settings.LoadSettings();
    EXPECT_EQ(settings.GetText(IInfoValueHost::Text::ConfigPath).c_str(), path);
    EXPECT_EQ(settings.GetText(IInfoValueHost::Text::Language).c_str(), language);
}

TEST_F(QuillgateSettingsTest, ASetterChangesMemoryOnly) {
    WriteConfig("[SYSTEM]\nFirstRun=0\nHistoryDays=12\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    settings.SetHistoryDays(40);
    settings.SetFirstRun(1);
    EXPECT_TRUE(rpc.requests.empty());
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(root.file(ConfigFile)),
              "[SYSTEM]\nFirstRun=0\nHistoryDays=12\n");
}

TEST_F(QuillgateSettingsTest, ThePlugInsSetAndGetCodesReachTheSettings) {
    WriteConfig("[SYSTEM]\nFirstRun=0\nFilterOn=0\n");
    RecordingRpc rpc;
    QuillgateSettings settings;
    SettingsHost host(settings);
    InfoValues codes(host);

    codes.SetInfoValue(256, 0);
    codes.SetInfoValue(257, 21);
    codes.SetInfoValue(258, -3);
    const stdstr path = u"/plugin/path";
    codes.SetInfoValue(259, reinterpret_cast<InfoValues::Value>(path.c_str()));
    const stdstr language = u"1041";
    codes.SetInfoValue(260, reinterpret_cast<InfoValues::Value>(language.c_str()));
    EXPECT_EQ(settings.GetAutoUpgrade(), 0);
    EXPECT_EQ(settings.GetUpgradePeriod(), 21);
    EXPECT_EQ(settings.GetHistoryDays(), -3);
    EXPECT_EQ(settings.GetConfigPath(), u"/plugin/path");
    EXPECT_EQ(settings.GetLanguage(), u"1041");

    EXPECT_EQ(codes.GetInfoValue(256, 0), 0);
    EXPECT_EQ(codes.GetInfoValue(257, 0), 21);
    EXPECT_EQ(codes.GetInfoValue(258, 0), -3);
    EXPECT_EQ(codes.GetInfoValue(5, 0), 0);
    EXPECT_EQ(reinterpret_cast<const char16_t*>(codes.GetInfoValue(259, 0)),
              settings.GetText(IInfoValueHost::Text::ConfigPath).c_str());
    EXPECT_EQ(stdstr(reinterpret_cast<const char16_t*>(codes.GetInfoValue(260, 0))), u"1041");

    EXPECT_TRUE(rpc.requests.empty());
    EXPECT_EQ(codes.SetInfoValue(261, 0), 0);
    ASSERT_EQ(rpc.requests.size(), 1u);
    const auto msg = ConfigChange(rpc.requests[0]);
    ASSERT_TRUE(msg);
    EXPECT_EQ(msg->GetUpgradePeriod(), 21);
    EXPECT_EQ(msg->GetLanguage(), u"1041");
    EXPECT_EQ(codes.GetInfoValue(261, 0), 0);
}

TEST_F(QuillgateSettingsTest, AConfigChangeFromTheServiceWritesEveryFieldButTheProcessId) {
    WriteConfig("[SYSTEM]\nFirstRun=0\n");
    QuillgateSettings settings;
    SettingsPort& port = settings;
    port.SetAutoUpgrade(0);
    port.SetConfigPath(u"/from/service");
    port.SetLanguage(u"1030");
    port.SetFilterOn(0);
    port.SetFirstRun(1);
    port.SetHistoryDays(7);
    port.SetShowCloseWindow(0);
    port.SetUpgradePeriod(2);
    EXPECT_EQ(settings.GetAutoUpgrade(), 0);
    EXPECT_EQ(settings.GetConfigPath(), u"/from/service");
    EXPECT_EQ(settings.GetLanguage(), u"1030");
    EXPECT_EQ(settings.GetFilterOn(), 0);
    EXPECT_EQ(settings.GetFirstRun(), 1);
    EXPECT_EQ(settings.GetHistoryDays(), 7);
    EXPECT_EQ(settings.GetShowCloseWindow(), 0);
    EXPECT_EQ(settings.GetUpgradePeriod(), 2);
}
