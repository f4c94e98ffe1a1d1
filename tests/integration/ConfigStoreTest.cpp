// ConfigStore: the "SYSTEM" keys of QGConfig.ini written into whatever else the file holds,
// read back as the program reads them, and replaced without a moment of half a file.
#include "service/ConfigStore.h"

#include "support/SandboxRoot.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

SystemSettings Chosen() {
    SystemSettings settings;
    settings.firstRun = 0;
    settings.filterOn = 0;
    settings.autoUpgrade = 1;
    settings.showCloseWindow = 0;
    settings.upgradePeriod = 14;
    settings.historyDays = 60;
    settings.configPath = u"/var/lib/velloran/quillgate";
    settings.language = u"1036";
    return settings;
}

const char* const ChosenKeys = "FirstRun=0\nFilterOn=0\nAutoUpgrade=1\nShowCloseWindow=0\n"
                               "UpgradePeriod=14\nHistoryDays=60\n"
                               "ConfigPath=/var/lib/velloran/quillgate\nLanguage=1036\n";

} // namespace

TEST(ConfigStore, WritesANewFileAsOneSystemSection) {
    EXPECT_EQ(ConfigStore::compose("", Chosen()), std::string("[SYSTEM]\n") + ChosenKeys);
}

TEST(ConfigStore, AddsTheSectionBehindWhatTheFileHoldsAfterABlankLine) {
    EXPECT_EQ(ConfigStore::compose("[Engine]\r\nMode=2\r\n", Chosen()),
              std::string("[Engine]\nMode=2\n\n[SYSTEM]\n") + ChosenKeys);
}

TEST(ConfigStore, ReplacesKeysInPlaceWhateverTheirCaseAndAddsTheMissingOnesAtTheSectionsEnd) {
    const std::string before =
        "[SYSTEM]\nlanguage = 1033\nCustom=kept\nFIRSTRUN=1\n\n[Next]\nA=1\n";
    EXPECT_EQ(ConfigStore::compose(before, Chosen()),
              "[SYSTEM]\nLanguage=1036\nCustom=kept\nFirstRun=0\nFilterOn=0\nAutoUpgrade=1\n"
              "ShowCloseWindow=0\nUpgradePeriod=14\nHistoryDays=60\n"
              "ConfigPath=/var/lib/velloran/quillgate\n\n[Next]\nA=1\n");
}

TEST(ConfigStore, KeepsOnlyTheFirstLineOfAKeyGivenTwice) {
    const std::string after = ConfigStore::compose("[SYSTEM]\nFilterOn=1\nFilterOn=1\n", Chosen());
    EXPECT_EQ(after.find("FilterOn="), after.rfind("FilterOn="));
}

TEST(ConfigStore, QuotesATextThatTheReaderWouldOtherwiseTrim) {
    SystemSettings settings = Chosen();
    settings.configPath = u" /padded ";
    settings.language = u"\"quoted\"";
    const std::string text = ConfigStore::compose("", settings);
    EXPECT_NE(text.find("ConfigPath=\" /padded \"\n"), std::string::npos);
    EXPECT_NE(text.find("Language=\"\"quoted\"\"\n"), std::string::npos);
    EXPECT_EQ(ConfigStore::parse(text), settings);
}

TEST(ConfigStore, EndsATextValueAtALineBreak) {
    SystemSettings settings = Chosen();
    settings.language = u"10\n36";
    EXPECT_NE(ConfigStore::compose("", settings).find("Language=10\n"), std::string::npos);
}

TEST(ConfigStore, ReadsTheDefaultsForAMissingFileOrMissingKeys) {
    const SystemSettings defaults = ConfigStore::parse("");
    EXPECT_EQ(defaults.firstRun, 1);
    EXPECT_EQ(defaults.filterOn, 1);
    EXPECT_EQ(defaults.autoUpgrade, 1);
    EXPECT_EQ(defaults.showCloseWindow, 1);
    EXPECT_EQ(defaults.upgradePeriod, 5);
    EXPECT_EQ(defaults.historyDays, 30);
    EXPECT_EQ(defaults.configPath, u"");
    EXPECT_EQ(defaults.language, u"");
    EXPECT_EQ(ConfigStore::parse("[Other]\nFirstRun=0\n"), defaults);
}

TEST(ConfigStore, ReadsNumbersAsTheProfileReaderDoes) {
    const SystemSettings read =
        ConfigStore::parse("[system]\nUpgradePeriod=abc\nHistoryDays=-4days\nFilterOn = 0 \n");
    EXPECT_EQ(read.upgradePeriod, 0);
    EXPECT_EQ(read.historyDays, -4);
    EXPECT_EQ(read.filterOn, 0);
}

TEST(ConfigStore, StoresAtomicallyAndKeepsTheNewSettings) {
    TestSupport::SandboxRoot sandbox;
    const std::string path = sandbox.file("var/lib/velloran/quillgate/QGConfig.ini");
    ConfigStore store(path);
    store.load();
    EXPECT_EQ(store.settings(), SystemSettings());
    std::string error;
    ASSERT_TRUE(store.store(Chosen(), error)) << error;
    EXPECT_EQ(store.settings(), Chosen());
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(path), std::string("[SYSTEM]\n") + ChosenKeys);
    EXPECT_EQ(std::distance(
                  std::filesystem::directory_iterator(sandbox.file("var/lib/velloran/quillgate")),
                  std::filesystem::directory_iterator()),
              1);
    ConfigStore again(path);
    again.load();
    EXPECT_EQ(again.settings(), Chosen());
}

TEST(ConfigStore, ReportsAFolderThatCannotBeMadeAndKeepsItsSettings) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("blocker", "a file where a folder should be");
    ConfigStore store(sandbox.file("blocker/QGConfig.ini"));
    std::string error;
    EXPECT_FALSE(store.store(Chosen(), error));
    EXPECT_EQ(error.rfind("cannot create " + sandbox.file("blocker") + ": ", 0), 0u) << error;
    EXPECT_EQ(store.settings(), SystemSettings());
}
