// The plug-in's page records: what GetPageInfo writes into the 536 bytes, and that a record
// it did not write is refused.
#include "PageRecord.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(PageRecord, EachFixedIndexDescribesItsPage) {
    const std::pair<std::int32_t, PageKind> pages[] = {
        {0, PageKind::AddressList}, {8, PageKind::Settings},       {9, PageKind::Status},
        {11, PageKind::Welcome},    {12, PageKind::WizardOptions}, {5, PageKind::None},
        {10, PageKind::None},
    };
    for (const auto& [index, kind] : pages) {
        PluginPageRecord record;
        std::memset(record.bytes, 0xA5, sizeof record.bytes);
        PageRecord::Fill(index, record);
        const auto content = PageRecord::Read(&record);
        ASSERT_TRUE(content.has_value()) << index;
        EXPECT_EQ(content->index, index);
        EXPECT_EQ(content->kind, kind);
        EXPECT_EQ(content->title, PageRecord::TitleOf(kind));
        // Nothing of what the block held before is left behind the fields.
        EXPECT_EQ(record.bytes[sizeof record.bytes - 1], 0) << index;
    }
}

TEST(PageRecord, TheStatusRecordCarriesItsTitle) {
    PluginPageRecord record{};
    PageRecord::Fill(9, record);
    EXPECT_EQ(PageRecord::Read(&record)->title, u"Status");
    EXPECT_EQ(std::memcmp(record.bytes, "QGPR", 4), 0);
}

TEST(PageRecord, AZeroedNullOrPatchedRecordIsRefused) {
    PluginPageRecord zeroed{};
    EXPECT_FALSE(PageRecord::Read(&zeroed).has_value());
    EXPECT_FALSE(PageRecord::Read(nullptr).has_value());

    PluginPageRecord patched{};
    PageRecord::Fill(9, patched);
    const std::int32_t otherIndex = 8;
    std::memcpy(patched.bytes + PageRecord::IndexOffset, &otherIndex, sizeof otherIndex);
    EXPECT_FALSE(PageRecord::Read(&patched).has_value());

    PluginPageRecord newer{};
    PageRecord::Fill(9, newer);
    const std::uint32_t version = PageRecord::LayoutVersion + 1;
    std::memcpy(newer.bytes + PageRecord::VersionOffset, &version, sizeof version);
    EXPECT_FALSE(PageRecord::Read(&newer).has_value());
}
