// Boxes asked for on a worker thread are shown on the GUI thread.

#include "app/GuiThreadMessageBoxes.h"

#include "AppTestApp.h"
#include "RecordingBoxes.h"
#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

TEST(GuiThreadMessageBoxes, ABoxOnTheGuiThreadIsShownAtOnce) {
    QApplication& app = AppTestApp();
    RecordingBoxes inner;
    GuiThreadMessageBoxes boxes(inner);
    EXPECT_EQ(boxes.MessageBox(nullptr, u"text", u"caption", 0x10), IMessageBoxes::IDOK);
    const auto shown = inner.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].thread, app.thread());
}

TEST(GuiThreadMessageBoxes, ABoxOfAWorkerIsShownOnTheGuiThreadWhileTheWorkerWaits) {
    QApplication& app = AppTestApp();
    RecordingBoxes inner;
    GuiThreadMessageBoxes boxes(inner);
    std::atomic<bool> answered{false};
    std::atomic<int> answer{0};
    std::thread worker([&] {
        answer = boxes.MessageBox(nullptr, u"from the worker", u"Quillgate Error", 0x10);
        answered = true;
    });
    const bool done = TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return answered.load();
    });
    worker.join();
    ASSERT_TRUE(done);
    EXPECT_EQ(answer.load(), IMessageBoxes::IDOK);
    const auto shown = inner.Boxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, u"from the worker");
    EXPECT_EQ(shown[0].caption, u"Quillgate Error");
    EXPECT_EQ(shown[0].type, 0x10u);
    EXPECT_EQ(shown[0].thread, app.thread());
}
