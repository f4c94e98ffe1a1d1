#include "StringTable.h"
#include "resource.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#ifndef QG_RESOURCE_HEADER
#error "QG_RESOURCE_HEADER must name the string table's resource.h"
#endif

namespace {

using QGResources::EnglishStringTable;
using QGResources::FindEnglishString;

struct HeaderScan {
    std::map<std::string, std::uint32_t> idsByName;
    std::multiset<std::uint32_t> ids;
    std::vector<std::string> malformedDefines;
};

// Reads resource.h the way the ResourceToString tool does: line by line, and only lines that
// hold "#define". Every such line must be a plain "#define IDS_NAME digits".
HeaderScan scanResourceHeader() {
    HeaderScan scan;
    std::ifstream in(QG_RESOURCE_HEADER);
    EXPECT_TRUE(in.is_open()) << "cannot open " << QG_RESOURCE_HEADER;
    const std::regex plainDefine(R"(^#define[ \t]+(IDS_[A-Z0-9_]+)[ \t]+([0-9]+)$)");
    std::string line;
    while (std::getline(in, line)) {
        if (line.find("#define") == std::string::npos) {
            continue;
        }
        std::smatch match;
        if (!std::regex_match(line, match, plainDefine)) {
            scan.malformedDefines.push_back(line);
            continue;
        }
        const auto id = static_cast<std::uint32_t>(std::stoul(match[2].str()));
        scan.idsByName.emplace(match[1].str(), id);
        scan.ids.insert(id);
    }
    return scan;
}

std::u16string_view textOf(std::uint32_t id) {
    const char16_t* text = FindEnglishString(id);
    return text == nullptr ? std::u16string_view{} : std::u16string_view{text};
}

bool isLinkId(std::uint32_t id) {
    return id >= 192 && id <= 198;
}

std::u16string homePage() {
    const std::string_view narrow = QG_HOME_PAGE;
    return std::u16string(narrow.begin(), narrow.end());
}

TEST(StringTable, IdsAreUniqueAndSortedAscending) {
    const auto table = EnglishStringTable();
    ASSERT_FALSE(table.empty());
    for (std::size_t i = 1; i < table.size(); ++i) {
        EXPECT_LT(table[i - 1].id, table[i].id) << "at index " << i;
    }
}

TEST(StringTable, EveryEntryHasANonEmptyText) {
    for (const auto& entry : EnglishStringTable()) {
        ASSERT_NE(entry.text, nullptr) << "id " << entry.id;
        EXPECT_FALSE(std::u16string_view{entry.text}.empty()) << "id " << entry.id;
    }
}

TEST(StringTable, ResourceHeaderHoldsOnlyPlainIdDefines) {
    const HeaderScan scan = scanResourceHeader();
    EXPECT_TRUE(scan.malformedDefines.empty())
        << "first malformed line: "
        << (scan.malformedDefines.empty() ? std::string{} : scan.malformedDefines.front());
    EXPECT_EQ(scan.ids.size(), scan.idsByName.size()) << "a name is defined twice";
    EXPECT_EQ(std::set<std::uint32_t>(scan.ids.begin(), scan.ids.end()).size(), scan.ids.size())
        << "an id is defined twice";
}

TEST(StringTable, EveryHeaderIdHasATableEntry) {
    const HeaderScan scan = scanResourceHeader();
    ASSERT_FALSE(scan.idsByName.empty());
    for (const auto& [name, id] : scan.idsByName) {
        EXPECT_NE(FindEnglishString(id), nullptr) << name << " (" << id << ") has no text";
    }
}

TEST(StringTable, EveryTableEntryIsDefinedInTheHeader) {
    const HeaderScan scan = scanResourceHeader();
    for (const auto& entry : EnglishStringTable()) {
        EXPECT_EQ(scan.ids.count(entry.id), 1u) << "id " << entry.id << " not in resource.h";
    }
    EXPECT_EQ(scan.ids.size(), EnglishStringTable().size());
}

TEST(StringTable, HeaderNamesMatchTheIdsTheCodeUses) {
    const HeaderScan scan = scanResourceHeader();
    EXPECT_EQ(scan.idsByName.at("IDS_PRODUCT_NAME"), 129u);
    EXPECT_EQ(scan.idsByName.at("IDS_STRING_URL_HOMEPAGE"), 193u);
    EXPECT_EQ(scan.idsByName.at("IDS_STRING_URL_SUPPORT"), 194u);
    EXPECT_EQ(scan.idsByName.at("IDS_TRAY_TURN_FILTERING_OFF"), 245u);
    EXPECT_EQ(scan.idsByName.at("IDS_HELP_FILE_NAME"), 212u);
}

TEST(StringTable, AnUnknownIdGivesNull) {
    EXPECT_EQ(FindEnglishString(0), nullptr);
    EXPECT_EQ(FindEnglishString(127), nullptr);
    EXPECT_EQ(FindEnglishString(195), nullptr);
    EXPECT_EQ(FindEnglishString(261), nullptr);
    EXPECT_EQ(FindEnglishString(0xFFFFFFFFu), nullptr);
}

TEST(StringTable, FirstAndLastIdsAreFound) {
    EXPECT_EQ(textOf(128), u"Quillgate");
    EXPECT_EQ(textOf(260), u"*Please wait while attempting to stop Velloran Quillgate service...");
}

TEST(StringTable, ServiceStartTextKeepsItsDoubledBlanks) {
    EXPECT_EQ(textOf(256), u"*The Velloran Quillgate service has not been started.  Please wait "
                           u"while this service is automatically started.  This may take a "
                           u"couple of minutes...");
}

TEST(StringTable, ComponentFailureTextsKeepDoubledBlanksAndPlaceholder) {
    EXPECT_EQ(textOf(237), u"*Failed to start Quillgate because it cannot  load an important "
                           u"component it requires to run. Reinstall Quillgate to fix the "
                           u"problem.");
    EXPECT_EQ(textOf(238), u"*Quillgate cannot start because it cannot load  %s.");
}

TEST(StringTable, MisspellingsAreKeptAsShipped) {
    EXPECT_EQ(textOf(235), u"*Failed to reboot computer, please reboot manully.");
    EXPECT_EQ(textOf(255), u"*Failed to start Velloran Quillgate service, unable to run "
                           u"Quillgate, please contace your administrator.");
    EXPECT_EQ(textOf(253), u"*Failed to initialize Quillgate GUI, please find detail infomation "
                           u"in log file.");
}

TEST(StringTable, SummaryAndWizardTextsBreakLinesWithCarriageReturnLineFeed) {
    EXPECT_EQ(textOf(220), u"*Quillgate Summary\r\nSPAM : %ld\r\nExamined : %ld");
    EXPECT_EQ(textOf(223),
              u"*Congratulations!\r\n\r\nQuillgate is now configured to filter spam messages.");
}

TEST(StringTable, RunFailureTextKeepsBothPlaceholders) {
    EXPECT_EQ(textOf(258), u"*Failed to run %s, error %d.");
    EXPECT_EQ(textOf(257), u"*Quillgate Error");
}

TEST(StringTable, TrayMenuAndTipTextsCarryTheMarker) {
    EXPECT_EQ(textOf(IDS_TRAY_TURN_FILTERING_ON), u"*Turn Filtering On");
    EXPECT_EQ(textOf(IDS_TRAY_TURN_FILTERING_OFF), u"*Turn Filtering Off");
    EXPECT_EQ(textOf(IDS_TRAY_OPEN_QUILLGATE), u"*Open Quillgate");
    EXPECT_EQ(textOf(IDS_TRAY_EXIT), u"*Exit");
    EXPECT_EQ(textOf(IDS_TRAY_TIP_ACTIVE), u"*Active");
    EXPECT_EQ(textOf(IDS_TRAY_TIP_DISABLED), u"*Disabled");
}

TEST(StringTable, TheTwoOkCaptionsKeepTheirDifferentCase) {
    EXPECT_EQ(textOf(176), u"*Ok");
    EXPECT_EQ(textOf(239), u"*OK");
}

TEST(StringTable, MainWindowTitleIsUntranslatedAndEqualsTheProductName) {
    // Found by title without translation, so it carries no marker.
    EXPECT_EQ(textOf(IDS_MAIN_WINDOW_TITLE), u"Quillgate");
    EXPECT_EQ(textOf(IDS_PRODUCT_NAME), u"*Quillgate");
}

TEST(StringTable, HelpFileNameCarriesNoMarker) {
    EXPECT_EQ(textOf(IDS_HELP_FILE_NAME), u"eng-qghelp.html");
}

TEST(StringTable, OnlyLinksHelpFileAndWindowTitleLackTheMarker) {
    for (const auto& entry : EnglishStringTable()) {
        const std::u16string_view text{entry.text};
        const bool unmarked = isLinkId(entry.id) || entry.id == IDS_HELP_FILE_NAME ||
                              entry.id == IDS_MAIN_WINDOW_TITLE;
        if (unmarked) {
            EXPECT_FALSE(text.starts_with(u'*')) << "id " << entry.id;
        } else {
            EXPECT_TRUE(text.starts_with(u'*')) << "id " << entry.id;
        }
    }
}

TEST(StringTable, EveryLinkLiesUnderTheHomePage) {
    const std::u16string home = homePage();
    ASSERT_TRUE(home.starts_with(u"https://"));
    ASSERT_FALSE(home.ends_with(u'/'));
    int links = 0;
    for (const auto& entry : EnglishStringTable()) {
        if (!isLinkId(entry.id)) {
            continue;
        }
        ++links;
        const std::u16string_view text{entry.text};
        EXPECT_TRUE(text.starts_with(home + u'/')) << "id " << entry.id;
        EXPECT_EQ(text.find_first_of(u" \t\r\n"), std::u16string_view::npos) << "id " << entry.id;
    }
    EXPECT_EQ(links, 6);
}

TEST(StringTable, HomePageAndSupportLinksHaveTheirPaths) {
    EXPECT_EQ(textOf(IDS_STRING_URL_HOMEPAGE), homePage() + u"/");
    EXPECT_EQ(textOf(IDS_STRING_URL_SUPPORT), homePage() + u"/quillgate/support/");
}

} // namespace
