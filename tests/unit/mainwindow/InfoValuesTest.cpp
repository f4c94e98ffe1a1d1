// The answers to the plug-in's set (1051) and get (1052) requests, code by code.

#include "mainwindow/InfoValues.h"

#include "mainwindow/IInfoValueHost.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

class RecordingInfoHost : public IInfoValueHost {
public:
    void SetFlagByte(int code, std::uint8_t value) override {
        calls.push_back("flag " + std::to_string(code) + " " + std::to_string(value));
    }
    std::int32_t UpdateAction() override { return updateAction; }
    void SetUpdateAction(std::int32_t action) override {
        calls.push_back("action " + std::to_string(action));
        updateAction = action;
    }
    std::int32_t GetNumber(Number setting) override { return numbers[setting]; }
    void SetNumber(Number setting, std::int32_t value) override {
        calls.push_back("number " + std::to_string(static_cast<int>(setting)) + " " +
                        std::to_string(value));
        numbers[setting] = value;
    }
    const stdstr& GetText(Text setting) override { return texts[setting]; }
    void SetText(Text setting, const stdstr& value) override {
        calls.push_back("text " + std::to_string(static_cast<int>(setting)));
        texts[setting] = value;
    }
    bool SetFilterState(std::int32_t value) override {
        calls.push_back("filter " + std::to_string(value));
        return filterResult;
    }
    void RunFreshUpdate(std::int32_t mode) override {
        calls.push_back("update " + std::to_string(mode));
    }
    void NotifyService() override { calls.push_back("notify"); }
    void Command(int id) override { calls.push_back("command " + std::to_string(id)); }
    bool ReadFileVersion(const stdstr& path, std::array<std::uint32_t, 4>& version) override {
        askedPaths.push_back(path);
        const auto found = versions.find(path);
        if (found == versions.end())
            return false;
        version = found->second;
        return true;
    }

    std::vector<std::string> calls;
    std::vector<stdstr> askedPaths;
    std::map<stdstr, std::array<std::uint32_t, 4>> versions;
    std::map<Number, std::int32_t> numbers;
    std::map<Text, stdstr> texts;
    std::int32_t updateAction = 0;
    bool filterResult = true;
};

InfoValues::Value TextValue(const char16_t* text) {
    return reinterpret_cast<InfoValues::Value>(text);
}

std::u16string TextResult(InfoValues::Result result) {
    return std::u16string(reinterpret_cast<const char16_t*>(result));
}

using Number = IInfoValueHost::Number;
using Text = IInfoValueHost::Text;

TEST(InfoValues, Codes1And2SetTheirFlagByteToOneForAnyNonZeroValue) {
    RecordingInfoHost host;
    InfoValues values(host);
    EXPECT_EQ(values.SetInfoValue(1, 42), 0);
    EXPECT_EQ(values.SetInfoValue(2, 0), 0);
    EXPECT_EQ(values.SetInfoValue(2, -1), 0);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"flag 1 1", "flag 2 0", "flag 2 1"}));
}

TEST(InfoValues, Code4SetsTheUpdateActionAndCode9ReadsIt) {
    RecordingInfoHost host;
    InfoValues values(host);
    EXPECT_EQ(values.SetInfoValue(4, 3), 0);
    EXPECT_EQ(values.GetInfoValue(9, 0), 3);
}

TEST(InfoValues, Code7SetsTheFilterStateAndAnswersItsResult) {
    RecordingInfoHost host;
    InfoValues values(host);
    EXPECT_EQ(values.SetInfoValue(7, 1), 1);
    host.filterResult = false;
    EXPECT_EQ(values.SetInfoValue(7, 0), 0);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"filter 1", "filter 0"}));
}

TEST(InfoValues, Code8ClicksTheAddressListButtonAndNothingElse) {
    RecordingInfoHost host;
    InfoValues values(host);
    EXPECT_EQ(values.SetInfoValue(8, 77), 0);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"command 1001"}));
}

TEST(InfoValues, Codes256To258SetTheNumbersAndGetReadsThemBack) {
    RecordingInfoHost host;
    InfoValues values(host);
    EXPECT_EQ(values.SetInfoValue(256, 0), 0);
    EXPECT_EQ(values.SetInfoValue(257, 9), 0);
    EXPECT_EQ(values.SetInfoValue(258, -4), 0);
    EXPECT_EQ(values.GetInfoValue(256, 0), 0);
    EXPECT_EQ(values.GetInfoValue(257, 0), 9);
    EXPECT_EQ(values.GetInfoValue(258, 0), -4);
    host.numbers[Number::FilterOn] = 1;
    EXPECT_EQ(values.GetInfoValue(5, 0), 1);
}

TEST(InfoValues, Codes259And260TakeTheTextAtTheValueUpToTheirLimits) {
    RecordingInfoHost host;
    InfoValues values(host);
    const std::u16string longPath(300, u'p');
    const std::u16string longLanguage(200, u'l');

    EXPECT_EQ(values.SetInfoValue(259, TextValue(longPath.c_str())), 0);
    EXPECT_EQ(values.SetInfoValue(260, TextValue(longLanguage.c_str())), 0);

    EXPECT_EQ(host.texts[Text::ConfigPath], std::u16string(260, u'p'));
    EXPECT_EQ(host.texts[Text::Language], std::u16string(128, u'l'));
    EXPECT_EQ(values.SetInfoValue(259, TextValue(u"/srv/filter")), 0);
    EXPECT_EQ(host.texts[Text::ConfigPath], u"/srv/filter");
}

TEST(InfoValues, Codes259And260GetAPointerToTheSettingsText) {
    RecordingInfoHost host;
    host.texts[Text::ConfigPath] = u"/var/lib/velloran";
    host.texts[Text::Language] = u"1033";
    InfoValues values(host);
    EXPECT_EQ(values.GetInfoValue(259, 0),
              reinterpret_cast<InfoValues::Result>(host.texts[Text::ConfigPath].c_str()));
    EXPECT_EQ(TextResult(values.GetInfoValue(260, 0)), u"1033");
}

TEST(InfoValues, Code261NotifiesTheService) {
    RecordingInfoHost host;
    InfoValues values(host);
    EXPECT_EQ(values.SetInfoValue(261, 0), 0);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"notify"}));
}

TEST(InfoValues, UnknownCodesChangeNothingAndAnswerZero) {
    RecordingInfoHost host;
    host.updateAction = 5;
    InfoValues values(host);
    for (std::int32_t code : {0, 3, 5, 6, 9, 262, -1}) {
        EXPECT_EQ(values.SetInfoValue(code, 1), 0) << code;
    }
    for (std::int32_t code : {0, 2, 3, 4, 7, 8, 10, 261, -1}) {
        EXPECT_EQ(values.GetInfoValue(code, 1), 0) << code;
    }
    EXPECT_TRUE(host.calls.empty());
}

TEST(InfoValues, Code6RunsTheUpdateOnlyWhenTheActionIsOne) {
    RecordingInfoHost host;
    InfoValues values(host);
    host.updateAction = 2;
    EXPECT_EQ(values.GetInfoValue(6, 0), 0);
    EXPECT_TRUE(host.calls.empty());
    host.updateAction = 1;
    EXPECT_EQ(values.GetInfoValue(6, 0), 0);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"update 0"}));
}

TEST(InfoValues, Code1GivesTheFilesVersionInFourParts) {
    RecordingInfoHost host;
    host.versions[u"/usr/lib/quillgate/libQGPlugin.so"] = {3, 1, 0, 1207};
    InfoValues values(host);
    EXPECT_EQ(TextResult(values.GetInfoValue(1, TextValue(u"/usr/lib/quillgate/libQGPlugin.so"))),
              u"3.1.0.1207");
}

TEST(InfoValues, Code1AskedTwiceWithTwoFilesGivesTheFirstFilesVersionBothTimes) {
    RecordingInfoHost host;
    host.versions[u"/first"] = {1, 2, 3, 4};
    host.versions[u"/second"] = {5, 6, 7, 8};
    InfoValues values(host);

    const InfoValues::Result first = values.GetInfoValue(1, TextValue(u"/first"));
    const InfoValues::Result second = values.GetInfoValue(1, TextValue(u"/second"));

    EXPECT_EQ(TextResult(first), u"1.2.3.4");
    EXPECT_EQ(TextResult(second), u"1.2.3.4");
    EXPECT_EQ(first, second);
    EXPECT_EQ(host.askedPaths, (std::vector<stdstr>{u"/first"}));
}

TEST(InfoValues, Code1ForAnUnreadableFileIsEmptyAndStaysSo) {
    RecordingInfoHost host;
    host.versions[u"/readable"] = {1, 0, 0, 0};
    InfoValues values(host);
    EXPECT_EQ(TextResult(values.GetInfoValue(1, TextValue(u"/missing"))), u"");
    EXPECT_EQ(TextResult(values.GetInfoValue(1, TextValue(u"/readable"))), u"");
}

} // namespace
