// The main window's tables: the controls of its dialog, the looks of its buttons, the texts
// of the language step, the help menu, the large-font moves, the home-page area, the outline.

#include "mainwindow/MainDlgLayout.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> Ids() {
    std::vector<int> ids;
    for (const auto& control : MainDlgLayout::Controls())
        ids.push_back(control.id);
    return ids;
}

} // namespace

TEST(MainDlgLayout, TheDialogHoldsItsFourteenControlsInTemplateOrder) {
    EXPECT_EQ(Ids(), (std::vector<int>{1000, 1001, 1002, 1003, 1017, 1010, 1005, 1006, 1011, 1007,
                                       1008, 1016, 1009, 1015}));
}

TEST(MainDlgLayout, ControlsStandAtTheirPlacesInDialogUnits) {
    EXPECT_EQ(MainDlgLayout::Find(1000)->units, QRect(5, 60, 81, 19));
    EXPECT_EQ(MainDlgLayout::Find(1001)->units, QRect(5, 84, 81, 19));
    EXPECT_EQ(MainDlgLayout::Find(1002)->units, QRect(5, 108, 81, 19));
    EXPECT_EQ(MainDlgLayout::Find(1003)->units, QRect(5, 108, 81, 19));
    EXPECT_EQ(MainDlgLayout::Find(1017)->units, QRect(6, 132, 81, 19));
    EXPECT_EQ(MainDlgLayout::Find(1010)->units, QRect(5, 132, 81, 19));
    EXPECT_EQ(MainDlgLayout::Find(1005)->units, QRect(470, 3, 14, 11));
    EXPECT_EQ(MainDlgLayout::Find(1006)->units, QRect(486, 3, 14, 11));
    EXPECT_EQ(MainDlgLayout::Find(1011)->units, QRect(486, 3, 14, 11));
    EXPECT_EQ(MainDlgLayout::Find(1007)->units, QRect(503, 3, 14, 11));
    EXPECT_EQ(MainDlgLayout::Find(1008)->units, QRect(383, 19, 60, 13));
    EXPECT_EQ(MainDlgLayout::Find(1016)->units, QRect(373, 21, 10, 10));
    EXPECT_EQ(MainDlgLayout::Find(1009)->units, QRect(481, 19, 40, 13));
    EXPECT_EQ(MainDlgLayout::Find(1015)->units, QRect(2, 174, 83, 90));
    EXPECT_EQ(MainDlgLayout::Find(1012), nullptr);
}

TEST(MainDlgLayout, AdvancedAndTheHiddenButtonStartHidden) {
    EXPECT_FALSE(MainDlgLayout::Find(1002)->visible);
    EXPECT_FALSE(MainDlgLayout::Find(1010)->visible);
    EXPECT_FALSE(MainDlgLayout::Find(1011)->visible);
    EXPECT_TRUE(MainDlgLayout::Find(1000)->visible);
    EXPECT_TRUE(MainDlgLayout::Find(1006)->visible);
}

TEST(MainDlgLayout, ButtonLooksFollowTheirFamily) {
    using Bitmaps = std::array<std::uint16_t, 6>;
    using Colours = std::array<std::uint32_t, 4>;
    EXPECT_EQ(MainDlgLayout::LookOf(1005)->bitmaps, (Bitmaps{240, 241, 242, 243, 0, 0}));
    EXPECT_EQ(MainDlgLayout::LookOf(1006)->bitmaps, (Bitmaps{244, 245, 246, 247, 0, 0}));
    EXPECT_EQ(MainDlgLayout::LookOf(1011)->bitmaps, (Bitmaps{252, 253, 254, 255, 0, 0}));
    EXPECT_EQ(MainDlgLayout::LookOf(1007)->bitmaps, (Bitmaps{248, 249, 250, 251, 0, 0}));
    for (int id : {1005, 1006, 1011, 1007}) {
        EXPECT_EQ(MainDlgLayout::LookOf(id)->colours, (Colours{0, 0, 0, 0})) << id;
        EXPECT_TRUE(MainDlgLayout::LookOf(id)->pushMode) << id;
        EXPECT_FALSE(MainDlgLayout::LookOf(id)->soundOn) << id;
    }
    for (int id : {1000, 1001, 1002, 1003, 1010, 1017}) {
        const auto* look = MainDlgLayout::LookOf(id);
        EXPECT_EQ(look->bitmaps, (Bitmaps{256, 259, 260, 261, 256, 259})) << id;
        EXPECT_EQ(look->colours, (Colours{0, 0xFFFFFF, 9909043, 0xC0C0C0})) << id;
        EXPECT_FALSE(look->soundOn) << id;
        EXPECT_EQ(look->soundId, 206) << id;
        EXPECT_FALSE(look->pushMode) << id;
    }
    for (int id : {1009, 1008}) {
        const auto* look = MainDlgLayout::LookOf(id);
        EXPECT_EQ(look->bitmaps, (Bitmaps{263, 264, 262, 263, 263, 0})) << id;
        EXPECT_EQ(look->colours, (Colours{0xFFFFFF, 0, 65535, 0xC0C0C0})) << id;
        EXPECT_EQ(look->soundId, 206) << id;
        EXPECT_TRUE(look->pushMode) << id;
    }
    EXPECT_EQ(MainDlgLayout::LookOf(1015), nullptr);
    EXPECT_EQ(MainDlgLayout::LookOf(1016), nullptr);
}

TEST(MainDlgLayout, TheGroupHoldsStatusAddressListSettingsAboutInThatOrder) {
    EXPECT_EQ(MainDlgLayout::GroupButtons, (std::array<int, 4>{1000, 1001, 1003, 1017}));
}

TEST(MainDlgLayout, TheLanguageStepsTextsInItsOrder) {
    std::vector<std::pair<int, std::uint32_t>> tips;
    for (const auto& tip : MainDlgLayout::ToolTips())
        tips.emplace_back(tip.id, tip.stringId);
    EXPECT_EQ(tips, (std::vector<std::pair<int, std::uint32_t>>{
                        {1005, 130}, {1006, 131}, {1011, 143}, {1007, 144}}));

    std::vector<std::pair<int, std::uint32_t>> captions;
    for (const auto& caption : MainDlgLayout::Captions())
        captions.emplace_back(caption.id, caption.stringId);
    EXPECT_EQ(captions, (std::vector<std::pair<int, std::uint32_t>>{{1000, 141},
                                                                    {1001, 132},
                                                                    {1002, 133},
                                                                    {1003, 134},
                                                                    {1017, 142},
                                                                    {1009, 138},
                                                                    {1008, 139}}));
    for (const auto& caption : MainDlgLayout::Captions()) {
        const bool link = caption.id == 1009 || caption.id == 1008;
        EXPECT_EQ(caption.font,
                  link ? MainDlgLayout::CaptionFont::Link : MainDlgLayout::CaptionFont::Section)
            << caption.id;
        const bool onlyIfVisible = caption.id == 1002 || caption.id == 1017 || caption.id == 1008;
        EXPECT_EQ(caption.onlyIfVisible, onlyIfVisible) << caption.id;
        EXPECT_EQ(caption.toolTipId, caption.id == 1009 ? 137u : 0u) << caption.id;
    }
    const auto& help = MainDlgLayout::Captions()[5];
    EXPECT_EQ(help.align, -1);
    EXPECT_EQ(help.xOffset, 10);
}

TEST(MainDlgLayout, TheHelpMenuHasFourItems) {
    std::vector<std::pair<int, std::uint32_t>> items;
    for (const auto& item : MainDlgLayout::HelpMenuItems())
        items.emplace_back(item.command, item.stringId);
    EXPECT_EQ(items, (std::vector<std::pair<int, std::uint32_t>>{
                         {32782, 248}, {32783, 249}, {32784, 250}, {32785, 251}}));
}

TEST(MainDlgLayout, TheLargeFontLayoutMovesTheTopRowInItsOrder) {
    std::vector<std::array<int, 4>> steps;
    for (const auto& step : MainDlgLayout::HighDpiSteps())
        steps.push_back({step.id, step.up, step.right, step.widthDelta});
    EXPECT_EQ(steps, (std::vector<std::array<int, 4>>{{1005, 0, 16, -8},
                                                      {1007, 0, 17, -8},
                                                      {1011, 0, 17, -8},
                                                      {1006, 0, 18, -8},
                                                      {1009, 7, 25, 0},
                                                      {1008, 7, 94, -21},
                                                      {1016, 8, 94, 0}}));
    const auto& update = MainDlgLayout::HighDpiSteps()[5];
    EXPECT_EQ(MainDlgLayout::ApplyHighDpiStep(QRect(575, 31, 90, 21), update),
              QRect(669, 24, 69, 21));
}

TEST(MainDlgLayout, TheHomePageAreaLiesAtTheBottomLeft) {
    const QRect area = MainDlgLayout::HomePageArea(QSize(782, 449));
    EXPECT_EQ(area, QRect(8, 401, 124, 36));
    EXPECT_TRUE(area.contains(QPoint(8, 401)));
    EXPECT_TRUE(area.contains(QPoint(131, 436)));
    EXPECT_FALSE(area.contains(QPoint(132, 420)));
    EXPECT_FALSE(area.contains(QPoint(20, 437)));
    EXPECT_FALSE(area.contains(QPoint(7, 420)));
    EXPECT_EQ(MainDlgLayout::HomePageArea(QSize(800, 600)), QRect(8, 552, 124, 36));
}

TEST(MainDlgLayout, TheOutlineIsTwoPixelsLargerThanTheClientArea) {
    EXPECT_EQ(MainDlgLayout::RegionSize(QSize(782, 449)), QSize(784, 451));
    EXPECT_EQ(MainDlgLayout::CornerEllipse, 26);
}
