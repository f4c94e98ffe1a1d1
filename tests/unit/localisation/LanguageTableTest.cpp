// LanguageTable: ids, names and short codes of the product's languages, and the fall-backs
// to US English.
#include "localisation/LanguageTable.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(LanguageTable, MapsAnIdToItsNameAndCode) {
    EXPECT_EQ(LanguageTable::NameFromId(1031), u"German");
    EXPECT_EQ(LanguageTable::CodeFromId(1031), u"de");
    EXPECT_EQ(LanguageTable::NameFromId(2057), u"English British");
    EXPECT_EQ(LanguageTable::CodeFromId(2057), u"uk");
    EXPECT_EQ(LanguageTable::NameFromId(1028), u"Chinese Traditional");
    EXPECT_EQ(LanguageTable::CodeFromId(1028), u"ct");
    EXPECT_EQ(LanguageTable::CodeFromId(1041), u"jp");
}

TEST(LanguageTable, MapsANameToItsCodeAndId) {
    EXPECT_EQ(LanguageTable::CodeFromName(u"French"), u"fr");
    EXPECT_EQ(LanguageTable::IdFromName(u"French"), 1036u);
    EXPECT_EQ(LanguageTable::CodeFromName(u"Portuguese Brazilian"), u"br");
    EXPECT_EQ(LanguageTable::IdFromName(u"Portuguese Brazilian"), 1046u);
}

TEST(LanguageTable, AnUnknownIdIsUSEnglish) {
    EXPECT_EQ(LanguageTable::NameFromId(1033), u"English (US)");
    EXPECT_EQ(LanguageTable::NameFromId(0), u"English (US)");
    EXPECT_EQ(LanguageTable::NameFromId(1037), u"English (US)");
    EXPECT_EQ(LanguageTable::CodeFromId(1037), u"en");
}

TEST(LanguageTable, AnUnknownNameIsUSEnglish) {
    EXPECT_EQ(LanguageTable::CodeFromName(u"Klingon"), u"en");
    EXPECT_EQ(LanguageTable::IdFromName(u"Klingon"), 1033u);
    // Names are compared exactly.
    EXPECT_EQ(LanguageTable::IdFromName(u"german"), 1033u);
}

TEST(LanguageTable, HoldsTwentyThreeDistinctLanguages) {
    std::set<std::uint32_t> ids;
    std::set<stdstr> names;
    std::set<stdstr> codes;
    for (const auto& entry : LanguageTable::Entries()) {
        ids.insert(entry.id);
        names.insert(entry.name);
        codes.insert(entry.code);
        EXPECT_EQ(LanguageTable::NameFromId(entry.id), entry.name);
        EXPECT_EQ(LanguageTable::IdFromName(entry.name), entry.id);
    }
    EXPECT_EQ(ids.size(), 23u);
    EXPECT_EQ(names.size(), 23u);
    EXPECT_EQ(codes.size(), 23u);
}

} // namespace
