// The keyed page stack of the main window: adding, showing (with the double show that
// repaints the page already shown), the user value, and destroying the windows.

#include "toolkit/DialogPages.h"
#include "toolkit/CDialogPage.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include <QEvent>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <vector>

namespace {

// Remembers the show and hide events of a page window, in order.
class EventLog : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
            events.push_back(event->type());
        return false;
    }
    std::vector<QEvent::Type> events;
};

class PageStack : public ::testing::Test {
protected:
    void SetUp() override {
        ToolkitTestApp();
        mainWindow = std::make_unique<QWidget>();
        mainWindow->resize(782, 560);
        for (std::size_t i = 0; i < 3; ++i) {
            auto* window = new QWidget(mainWindow.get());
            window->hide();
            windows[i] = window;
            records[i] = std::make_unique<CDialogPage>(window);
        }
        mainWindow->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mainWindow.get()));
    }

    void AddAll() {
        ASSERT_EQ(stack.AddPage(records[0].get(), 0), DialogPages::ResultOk);
        ASSERT_EQ(stack.AddPage(records[1].get(), 1), DialogPages::ResultOk);
        ASSERT_EQ(stack.AddPage(records[2].get(), 2), DialogPages::ResultOk);
    }

    std::unique_ptr<QWidget> mainWindow;
    std::array<QPointer<QWidget>, 3> windows;
    std::array<std::unique_ptr<CDialogPage>, 3> records;
    DialogPages stack;
};

} // namespace

TEST_F(PageStack, KeyThatIsTakenKeepsItsPage) {
    AddAll();
    CDialogPage other(nullptr);
    EXPECT_EQ(stack.AddPage(&other, 1), DialogPages::ResultFalse);
    ASSERT_EQ(stack.ShowPage(1), DialogPages::ResultOk);
    EXPECT_EQ(stack.GetCurrentPage(), records[1].get());
    EXPECT_EQ(stack.Count(), 3u);
}

TEST_F(PageStack, UnknownKeyCannotBeShown) {
    AddAll();
    EXPECT_EQ(stack.ShowPage(7), DialogPages::ResultFail);
    EXPECT_EQ(stack.ShowPage(7), static_cast<std::int32_t>(0x80004005u));
    EXPECT_EQ(stack.GetCurrentPage(), nullptr);
    EXPECT_EQ(stack.CurrentKey(), -1);
}

TEST_F(PageStack, ShowingAPageHidesTheOneBefore) {
    AddAll();
    stack.ShowPage(0);
    EXPECT_TRUE(windows[0]->isVisible());
    stack.ShowPage(2);
    EXPECT_FALSE(windows[0]->isVisible());
    EXPECT_TRUE(windows[2]->isVisible());
    EXPECT_FALSE(windows[1]->isVisible());
    EXPECT_EQ(stack.CurrentKey(), 2);
    EXPECT_EQ(stack.GetCurrentPage(), records[2].get());
}

TEST_F(PageStack, PageOfAnotherParentIsNotHidden) {
    QWidget otherParent;
    auto* foreign = new QWidget(&otherParent);
    CDialogPage foreignRecord(foreign);
    otherParent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&otherParent));
    AddAll();
    stack.AddPage(&foreignRecord, 5);
    stack.ShowPage(0);
    stack.ShowPage(5);
    EXPECT_TRUE(windows[0]->isVisible());
    EXPECT_TRUE(foreign->isVisible());
    stack.RemovePage(5); // the record dies with this test, before the stack
}

TEST_F(PageStack, ShowingThePageAlreadyShownHidesAndShowsItAgainAndKeepsTheKey) {
    AddAll();
    stack.ShowPage(1);
    EventLog log;
    windows[1]->installEventFilter(&log);
    EXPECT_EQ(stack.ShowPage(1), DialogPages::ResultOk);
    EXPECT_EQ(log.events, (std::vector<QEvent::Type>{QEvent::Hide, QEvent::Show}));
    EXPECT_TRUE(windows[1]->isVisible());
    EXPECT_EQ(stack.CurrentKey(), 1);
    EXPECT_EQ(stack.GetCurrentPage(), records[1].get());
}

TEST_F(PageStack, NewPageIsHiddenThenShown) {
    AddAll();
    windows[2]->show();
    EventLog log;
    windows[2]->installEventFilter(&log);
    stack.ShowPage(2);
    EXPECT_EQ(log.events, (std::vector<QEvent::Type>{QEvent::Hide, QEvent::Show}));
}

TEST_F(PageStack, PageValueNeedsAPageShown) {
    AddAll();
    EXPECT_EQ(stack.SetPageValue(0, 42), DialogPages::ResultFail);
    EXPECT_EQ(stack.GetPageValue(0), 0);
}

TEST_F(PageStack, PageValueBelongsToThePageShownWhateverTheKey) {
    AddAll();
    stack.ShowPage(1);
    EXPECT_EQ(stack.SetPageValue(2, 42), DialogPages::ResultOk);
    EXPECT_EQ(stack.GetPageValue(0), 42);
    stack.ShowPage(2);
    EXPECT_EQ(stack.GetPageValue(2), 0);
    stack.ShowPage(1);
    EXPECT_EQ(stack.GetPageValue(9), 42);
}

TEST_F(PageStack, RemovingForgetsThePageButLeavesItsWindow) {
    AddAll();
    EXPECT_EQ(stack.RemovePage(1), DialogPages::ResultOk);
    EXPECT_EQ(stack.RemovePage(1), DialogPages::ResultFalse);
    EXPECT_FALSE(windows[1].isNull());
    EXPECT_EQ(stack.ShowPage(1), DialogPages::ResultFail);
}

TEST_F(PageStack, RemovingThePageShownLeavesNoCurrentPage) {
    AddAll();
    stack.ShowPage(1);
    stack.RemovePage(1);
    EXPECT_EQ(stack.GetCurrentPage(), nullptr);
    EXPECT_EQ(stack.SetPageValue(1, 5), DialogPages::ResultFail);
}

TEST_F(PageStack, DestroyingAPageDestroysItsWindowAndForgetsIt) {
    AddAll();
    EXPECT_EQ(stack.DestroyPage(0), DialogPages::ResultOk);
    EXPECT_TRUE(windows[0].isNull());
    EXPECT_EQ(stack.Count(), 2u);
    EXPECT_EQ(stack.DestroyPage(0), DialogPages::ResultFalse);
}

TEST_F(PageStack, DestroyingAPageWhoseWindowIsGoneForgetsIt) {
    AddAll();
    windows[1]->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(stack.DestroyPage(1), DialogPages::ResultOk);
    EXPECT_EQ(stack.Count(), 2u);
}

TEST_F(PageStack, DestroyAllDestroysEveryWindowAndEmptiesTheStack) {
    AddAll();
    stack.ShowPage(0);
    EXPECT_EQ(stack.DestroyAll(), DialogPages::ResultOk);
    EXPECT_EQ(stack.Count(), 0u);
    for (const auto& window : windows)
        EXPECT_TRUE(window.isNull());
    EXPECT_EQ(stack.GetCurrentPage(), nullptr);
}

TEST_F(PageStack, WindowThatCannotBeDestroyedMakesDestroyAllFailAndKeepsTheStack) {
    AddAll();
    windows[1]->deleteLater(); // already gone: nothing left to destroy
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(stack.DestroyAll(), DialogPages::ResultFail);
    EXPECT_EQ(stack.Count(), 3u);
    EXPECT_TRUE(windows[0].isNull());
    EXPECT_TRUE(windows[2].isNull());
}

TEST_F(PageStack, DestroyedStackDestroysTheWindowsLeft) {
    {
        DialogPages local;
        local.AddPage(records[0].get(), 0);
        local.AddPage(records[2].get(), 2);
    }
    EXPECT_TRUE(windows[0].isNull());
    EXPECT_FALSE(windows[1].isNull());
    EXPECT_TRUE(windows[2].isNull());
}
