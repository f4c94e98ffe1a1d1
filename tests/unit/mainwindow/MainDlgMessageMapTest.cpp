// The main window's message map: the order of its entries, which entries a message meets,
// and the walk that a handler's flag ends or lets go on.

#include "mainwindow/MainDlgMessageMap.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using Map = MainDlgMessageMap;
using H = Map::Handler;

// Writes down each handler that it is offered and answers as told.
class RecordingTarget : public Map::Target {
public:
    bool OnMessage(H handler, int, Map::WParam, Map::LParam, Map::Result& result) override {
        offered.push_back(handler);
        result = answers.count(handler) != 0 ? 100 + static_cast<int>(handler) : 0;
        return handled.count(handler) != 0;
    }
    std::vector<H> offered;
    std::set<H> handled;
    std::set<H> answers;
};

std::vector<H> Order() {
    std::vector<H> order;
    for (const auto& entry : Map::Entries())
        order.push_back(entry.handler);
    return order;
}

} // namespace

TEST(MainDlgMessageMap, EntriesStandInTheProgramsOrderOfPrecedence) {
    EXPECT_EQ(Order(), (std::vector<H>{H::InitDialog,
                                       H::HitTest,
                                       H::SystemMenu,
                                       H::SwallowCaptionDoubleClick,
                                       H::NcCalcSize,
                                       H::NcActivate,
                                       H::WindowShape,
                                       H::Colours,
                                       H::RunUpdate,
                                       H::TrayAnimate,
                                       H::RefreshStatus,
                                       H::Close,
                                       H::ExitQuiet,
                                       H::QueryEndSession,
                                       H::EndSession,
                                       H::ServiceMessage,
                                       H::ConfigChanged,
                                       H::ButtonEnter,
                                       H::ButtonLeave,
                                       H::SetInfo,
                                       H::GetInfo,
                                       H::Help,
                                       H::Timers,
                                       H::Language,
                                       H::ShowSummary,
                                       H::FilterState,
                                       H::Exit,
                                       H::RpcStatus,
                                       H::WindowButtons,
                                       H::MenuCommands,
                                       H::SectionButtons,
                                       H::HandCursor,
                                       H::HomePageClick,
                                       H::ChainDialogResize,
                                       H::ChainTray,
                                       H::ChainOffscreenDraw,
                                       H::ReflectNotifications}));
}

TEST(MainDlgMessageMap, EachPrivateMessageHasItsHandler) {
    const std::vector<std::pair<int, H>> expected = {
        {1037, H::RunUpdate},   {1054, H::TrayAnimate},    {1058, H::RefreshStatus},
        {1048, H::ExitQuiet},   {1060, H::ServiceMessage}, {1061, H::ConfigChanged},
        {1480, H::ButtonEnter}, {1481, H::ButtonLeave},    {1051, H::SetInfo},
        {1052, H::GetInfo},     {1280, H::Help},           {1055, H::Language},
        {1041, H::ShowSummary}, {1057, H::FilterState},    {1059, H::Exit},
        {1062, H::RpcStatus},
    };
    for (const auto& [message, handler] : expected)
        EXPECT_EQ(Map::Candidates(message, 0), std::vector<H>{handler}) << message;
}

TEST(MainDlgMessageMap, MessagesWithoutAnEntryGoToTheDefaultHandling) {
    // The wizard's end, the two launchers' notices, the wizard's own message, and the page
    // messages that only pages receive.
    for (int message : {1035, 1036, 1043, 1056, 1025, 1030, 1031, 1032}) {
        EXPECT_TRUE(Map::Candidates(message, 0).empty()) << message;
        RecordingTarget target;
        EXPECT_FALSE(Map::Dispatch(message, 0, 0, target).has_value()) << message;
        EXPECT_TRUE(target.offered.empty()) << message;
    }
}

TEST(MainDlgMessageMap, ASizeReachesTheOutlineAndThenTheResizeChain) {
    EXPECT_EQ(Map::Candidates(Map::WM_SIZE, 0),
              (std::vector<H>{H::WindowShape, H::ChainDialogResize}));
}

TEST(MainDlgMessageMap, ATimerReachesTheWindowAndThenTheTray) {
    EXPECT_EQ(Map::Candidates(Map::WM_TIMER, 401), (std::vector<H>{H::Timers, H::ChainTray}));
}

TEST(MainDlgMessageMap, WindowButtonsComeBeforeMenuCommandsAndSections) {
    for (int id : {1007, 1005, 1011, 1006, 1009, 1008})
        EXPECT_EQ(Map::Candidates(Map::WM_COMMAND, Map::MakeCommand(id)),
                  (std::vector<H>{H::WindowButtons, H::SectionButtons, H::ReflectNotifications}))
            << id;
    for (int id : {32785, 32782, 32783, 32784, 32790, 32789, 32787, 32788})
        EXPECT_EQ(Map::Candidates(Map::WM_COMMAND, Map::MakeCommand(id)),
                  (std::vector<H>{H::MenuCommands, H::SectionButtons, H::ReflectNotifications}))
            << id;
    for (int id : {1000, 1001, 1003, 1017, 1010, 32786, 2})
        EXPECT_EQ(Map::Candidates(Map::WM_COMMAND, Map::MakeCommand(id)),
                  (std::vector<H>{H::SectionButtons, H::ReflectNotifications}))
            << id;
}

TEST(MainDlgMessageMap, ACommandWithANotificationIsOnlyReflected) {
    EXPECT_EQ(Map::Candidates(Map::WM_COMMAND, Map::MakeCommand(1000, 1)),
              std::vector<H>{H::ReflectNotifications});
    EXPECT_EQ(Map::Candidates(Map::WM_COMMAND, Map::MakeCommand(1007, 0x300)),
              std::vector<H>{H::ReflectNotifications});
}

TEST(MainDlgMessageMap, TheMouseAndTheCaption) {
    EXPECT_EQ(Map::Candidates(Map::WM_NCLBUTTONDBLCLK, 2),
              std::vector<H>{H::SwallowCaptionDoubleClick});
    EXPECT_EQ(Map::Candidates(Map::WM_NCRBUTTONUP, 2), std::vector<H>{H::SystemMenu});
    EXPECT_EQ(Map::Candidates(Map::WM_LBUTTONDOWN, 1), std::vector<H>{H::HomePageClick});
    EXPECT_EQ(Map::Candidates(Map::WM_SETCURSOR, 0), std::vector<H>{H::HandCursor});
    EXPECT_EQ(Map::Candidates(Map::WM_NCHITTEST, 0), std::vector<H>{H::HitTest});
    EXPECT_EQ(Map::Candidates(Map::WM_CLOSE, 0), std::vector<H>{H::Close});
    EXPECT_EQ(Map::Candidates(Map::WM_CTLCOLORSTATIC, 0),
              (std::vector<H>{H::Colours, H::ReflectNotifications}));
    EXPECT_EQ(Map::Candidates(Map::WM_PAINT, 0), std::vector<H>{H::ChainOffscreenDraw});
}

TEST(MainDlgMessageMap, AHandledEntryEndsTheWalkWithItsAnswer) {
    RecordingTarget target;
    target.handled = {H::Timers};
    target.answers = {H::Timers};
    const auto result = Map::Dispatch(Map::WM_TIMER, 399, 0, target);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(*result, 100 + static_cast<int>(H::Timers));
    EXPECT_EQ(target.offered, std::vector<H>{H::Timers});
}

TEST(MainDlgMessageMap, AnEntryThatLeavesTheFlagClearLetsTheWalkGoOn) {
    RecordingTarget target;
    target.handled = {H::ChainTray};
    const auto result = Map::Dispatch(Map::WM_TIMER, 1, 0, target);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(target.offered, (std::vector<H>{H::Timers, H::ChainTray}));
}

TEST(MainDlgMessageMap, WhenNoEntryTakesItTheMessageIsLeftToTheDefault) {
    RecordingTarget target;
    EXPECT_FALSE(Map::Dispatch(1041, 0, 0, target).has_value());
    EXPECT_EQ(target.offered, std::vector<H>{H::ShowSummary});
}

TEST(MainDlgMessageMap, CommandWordsSplitIntoIdAndNotification) {
    const auto wParam = Map::MakeCommand(32788, 0x0123);
    EXPECT_EQ(Map::CommandId(wParam), 32788);
    EXPECT_EQ(Map::CommandCode(wParam), 0x0123);
}
