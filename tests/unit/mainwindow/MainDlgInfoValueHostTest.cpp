// The main window's side of the plug-in's set and get requests: everything goes to the
// application, except the Address List click, which the window takes.

#include "mainwindow/MainDlgInfoValueHost.h"

#include "MainWindowTestApp.h"
#include "RecordingMainWindowHost.h"
#include "mainwindow/InfoValues.h"

#include <gtest/gtest.h>

TEST(MainDlgInfoValueHost, SetCodeEightClicksTheWindowsButtonNotTheApplications) {
    MainWindowTestApp();
    CallLog log;
    RecordingMainWindowHost host(log);
    std::vector<int> commands;
    MainDlgInfoValueHost adapter(host, [&](int id) { commands.push_back(id); });
    InfoValues values(adapter);

    values.SetInfoValue(8, 0);

    EXPECT_EQ(commands, std::vector<int>{1001});
    EXPECT_TRUE(log.StartingWith("host Command").empty());
}

TEST(MainDlgInfoValueHost, EverythingElseReachesTheApplication) {
    MainWindowTestApp();
    CallLog log;
    RecordingMainWindowHost host(log);
    MainDlgInfoValueHost adapter(host, [](int) {});
    InfoValues values(adapter);

    values.SetInfoValue(7, 1);
    values.SetInfoValue(261, 0);
    values.SetInfoValue(4, 1);
    values.GetInfoValue(6, 0);
    values.SetInfoValue(256, 3);
    values.SetInfoValue(1, 5);

    EXPECT_EQ(log.lines, (std::vector<std::string>{"SetFilterState 1", "NotifyService",
                                                   "RunFreshUpdate 0", "SetFlagByte 1 1"}));
    EXPECT_EQ(host.numbers[IInfoValueHost::Number::AutoUpgrade], 3);
    EXPECT_EQ(values.GetInfoValue(5, 0), 1);
    EXPECT_EQ(values.GetInfoValue(9, 0), 1);
    const auto* path = reinterpret_cast<const char16_t*>(values.GetInfoValue(259, 0));
    EXPECT_EQ(std::u16string(path), u"/var/lib/velloran/quillgate");
}
