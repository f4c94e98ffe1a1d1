#include "app/QtInboundDialogs.h"

#include "AppTestApp.h"
#include "RecordingBoxes.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QThread>
#include <QWidget>

#include <gtest/gtest.h>

#include <future>
#include <memory>

namespace {

using Owner = InboundDialogs::Owner;

class QtInboundDialogsTest : public ::testing::Test {
protected:
    void SetUp() override {
        AppTestApp();
        TraceRecorder::Instance().Clear();
        window = std::make_unique<QWidget>();
    }

    RecordingBoxes boxes;
    std::unique_ptr<QWidget> window;
    QWidget* mainWindow = nullptr;
    QtInboundDialogs dialogs{boxes, [this] { return mainWindow; }};
};

TEST_F(QtInboundDialogsTest, ABoxOnTheGuiThreadIsShownThere) {
    mainWindow = window.get();

    EXPECT_EQ(dialogs.MessageBox(Owner::MainWindow, u"text", u"title", 0x10), 1);

    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].owner, window.get());
    EXPECT_EQ(shown[0].text, u"text");
    EXPECT_EQ(shown[0].caption, u"title");
    EXPECT_EQ(shown[0].type, 0x10u);
    EXPECT_EQ(shown[0].thread, QCoreApplication::instance()->thread());
}

TEST_F(QtInboundDialogsTest, ABoxWithoutOwnerHasNone) {
    mainWindow = window.get();
    dialogs.MessageBox(Owner::None, u"text", u"", 0);
    EXPECT_EQ(boxes.Boxes().at(0).owner, nullptr);
}

TEST_F(QtInboundDialogsTest, ABoxAskedForOnThePumpsThreadIsShownOnTheGuiThreadWhileItWaits) {
    auto answer = std::async(std::launch::async, [this] {
        return dialogs.MessageBox(Owner::None, u"from the pump", u"Quillgate", 0x10);
    });
    // The asking thread waits until this thread has shown the box.
    EXPECT_TRUE(TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return answer.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
    }));
    EXPECT_EQ(answer.get(), 1);
    const auto shown = boxes.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].thread, QCoreApplication::instance()->thread());
}

TEST_F(QtInboundDialogsTest, TheReinstallPromptIsNotBuiltYetAndLaunchesNothing) {
    EXPECT_EQ(dialogs.ReinstallPrompt(), InboundDialogs::ReinstallCancel);
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_DEBUG,
                  u"QtInboundDialogs::ReinstallPrompt - the reinstall prompt is not built yet"),
              1u);
    EXPECT_TRUE(boxes.Boxes().empty());
}

} // namespace
