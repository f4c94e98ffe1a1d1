#pragma once
// A main window over the recording host and the recording plug-in, for the widget tests of
// CMainDlg: one call log shows what the window did to both, in order.

#include "MainWindowTestApp.h"
#include "RecordingMainWindowHost.h"
#include "RecordingPlugin.h"
#include "mainwindow/CMainDlg.h"
#include "messaging/CheckRpcStatus.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"
#include "toolkit/CDibButtonCtrl.h"
#include "toolkit/PrivateMessageEvent.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

class MainDlgFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ServiceConnected.store(1);
        TraceRecorder::Instance().Clear();
    }
    void TearDown() override {
        dlg.reset();
        ServiceConnected.store(1);
    }

    // Uses the screen's dots per inch of the host's resources.
    void SetDpi(int dpi) {
        host.dpi = dpi;
        host.resources.Create(dpi, dpi);
    }

    CMainDlg& Make() {
        dlg = std::make_unique<CMainDlg>(host);
        EXPECT_TRUE(dlg->Create());
        return *dlg;
    }
    CMainDlg& MakeShown() {
        Make();
        dlg->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dlg.get()));
        Pump();
        return *dlg;
    }

    static void Pump() { QCoreApplication::processEvents(); }

    // Waits until the log holds `line`.
    bool WaitForLine(const std::string& line) {
        return TestSupport::WaitFor([&] {
            Pump();
            return log.IndexOf(line) >= 0;
        });
    }
    bool WaitFor(const std::function<bool()>& condition) {
        return TestSupport::WaitFor([&] {
            Pump();
            return condition();
        });
    }

    // Whether `expected` appears in the log in this order, other lines between allowed.
    ::testing::AssertionResult InOrder(const std::vector<std::string>& expected) const {
        std::size_t next = 0;
        for (const std::string& line : log.lines) {
            if (next < expected.size() && line == expected[next])
                ++next;
        }
        if (next == expected.size())
            return ::testing::AssertionSuccess();
        std::string text;
        for (const std::string& line : log.lines)
            text += "\n  " + line;
        return ::testing::AssertionFailure()
               << "missing or out of order: \"" << expected[next] << "\"; the log:" << text;
    }

    CDibButtonCtrl* ButtonById(int id) const {
        return dlg->findChild<CDibButtonCtrl*>(QString::number(id));
    }

    PrivateMessageEvent::Result Send(int message, PrivateMessageEvent::WParam wParam = 0,
                                     PrivateMessageEvent::LParam lParam = 0) {
        return PrivateMessageEvent::Send(dlg.get(), message, wParam, lParam);
    }

    void Click(QWidget* widget) {
        ASSERT_NE(widget, nullptr);
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, widget->rect().center());
        Pump();
    }

    QApplication& app = MainWindowTestApp();
    CallLog log;
    RecordingMainWindowHost host{log};
    RecordingPlugin plugin{log};
    std::unique_ptr<CMainDlg> dlg;
};
