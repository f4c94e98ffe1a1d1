#include "app/LanguageSetting.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {

TEST(LanguageSetting, ALanguageThatIsNotANumberGivesTheDefaultName) {
    EXPECT_EQ(LanguageSetting::ToNumber(u"German"), 0);
    EXPECT_EQ(LanguageSetting::NameOf(u"German"), u"English (US)");
}

TEST(LanguageSetting, AnEmptySettingGivesTheDefaultName) {
    EXPECT_EQ(LanguageSetting::NameOf(u""), u"English (US)");
}

TEST(LanguageSetting, TheNumberIsReadAsWtoiReadsIt) {
    EXPECT_EQ(LanguageSetting::ToNumber(u"1031"), 1031);
    EXPECT_EQ(LanguageSetting::ToNumber(u"  1036"), 1036);
    EXPECT_EQ(LanguageSetting::ToNumber(u"\t\n1040xyz"), 1040);
    EXPECT_EQ(LanguageSetting::ToNumber(u"+2057"), 2057);
    EXPECT_EQ(LanguageSetting::ToNumber(u"-12"), -12);
    EXPECT_EQ(LanguageSetting::ToNumber(u"- 12"), 0);
    EXPECT_EQ(LanguageSetting::ToNumber(u"x1031"), 0);
}

TEST(LanguageSetting, NumbersOutOfRangeStopAtTheLimits) {
    EXPECT_EQ(LanguageSetting::ToNumber(u"99999999999999999999"),
              std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(LanguageSetting::ToNumber(u"-99999999999999999999"),
              std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(LanguageSetting::ToNumber(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
}

TEST(LanguageSetting, TextAfterTheDigitsIsIgnored) {
    EXPECT_EQ(LanguageSetting::NameOf(u"1036 (French)"), u"French");
}

TEST(LanguageSetting, EveryIdOfTheTableGivesItsName) {
    const std::vector<std::pair<std::int32_t, std::u16string>> table = {
        {1028, u"Chinese Traditional"},
        {1043, u"Dutch"},
        {1029, u"Czech"},
        {1044, u"Norwegian"},
        {1030, u"Danish"},
        {1045, u"Polish"},
        {1031, u"German"},
        {1046, u"Portuguese Brazilian"},
        {1032, u"Greek"},
        {1049, u"Russian"},
        {1034, u"Spanish"},
        {1053, u"Swedish"},
        {1035, u"Finnish"},
        {1054, u"Thai"},
        {1036, u"French"},
        {1055, u"Turkish"},
        {1040, u"Italian"},
        {2052, u"Chinese Simplified"},
        {1041, u"Japanese"},
        {2057, u"English British"},
        {1042, u"Korean"},
        {2070, u"Portuguese"},
    };
    for (const auto& [id, name] : table) {
        EXPECT_EQ(LanguageSetting::NameOfId(id), name) << id;
        EXPECT_EQ(LanguageSetting::NameOf(stdstr::toTString(std::to_string(id))), name) << id;
    }
}

TEST(LanguageSetting, EveryOtherIdGivesUsEnglish) {
    for (std::int32_t id : {1033, 0, 1, 1027, 1037, 1038, 1039, 1047, 1048, 1050, 2058, -1031})
        EXPECT_EQ(LanguageSetting::NameOfId(id), u"English (US)") << id;
}

} // namespace
