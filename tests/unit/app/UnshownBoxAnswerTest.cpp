// A box that cannot be shown takes the way out; the program's box classes answer so when no
// widgets' application exists. This test program never makes one.

#include "app/UnshownBoxAnswer.h"

#include "app/GuiThreadMessageBoxes.h"
#include "app/QtInboundDialogs.h"

#include "RecordingBoxes.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <future>

namespace {

TEST(UnshownBoxAnswer, EachKindOfBoxTakesItsWayOut) {
    EXPECT_EQ(UnshownBoxAnswer::For(IMessageBoxes::MB_OK), IMessageBoxes::IDOK);
    EXPECT_EQ(UnshownBoxAnswer::For(IMessageBoxes::MB_OK | IMessageBoxes::MB_ICONHAND),
              IMessageBoxes::IDOK);
    EXPECT_EQ(UnshownBoxAnswer::For(IMessageBoxes::MB_OKCANCEL), IMessageBoxes::IDCANCEL);
    EXPECT_EQ(UnshownBoxAnswer::For(IMessageBoxes::MB_YESNO | IMessageBoxes::MB_ICONEXCLAMATION |
                                    0x10000),
              IMessageBoxes::IDNO);
}

TEST(UnshownBoxAnswer, WithoutAnApplicationTheAnyThreadBoxesShowNothing) {
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    RecordingBoxes inner;
    GuiThreadMessageBoxes boxes(inner);

    EXPECT_EQ(boxes.MessageBox(nullptr, u"text", u"caption", IMessageBoxes::MB_YESNO),
              IMessageBoxes::IDNO);
    auto fromWorker = std::async(std::launch::async, [&] {
        return boxes.MessageBox(nullptr, u"text", u"caption", IMessageBoxes::MB_OK);
    });
    EXPECT_EQ(fromWorker.get(), IMessageBoxes::IDOK);
    EXPECT_TRUE(inner.Boxes().empty());
}

TEST(UnshownBoxAnswer, WithoutAnApplicationThePumpsBoxesShowNothing) {
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    RecordingBoxes inner;
    bool windowAsked = false;
    QtInboundDialogs dialogs(inner, [&]() -> QWidget* {
        windowAsked = true;
        return nullptr;
    });

    auto fromPump = std::async(std::launch::async, [&] {
        return dialogs.MessageBox(InboundDialogs::Owner::MainWindow, u"text", u"title",
                                  IMessageBoxes::MB_OKCANCEL);
    });
    EXPECT_EQ(fromPump.get(), IMessageBoxes::IDCANCEL);
    EXPECT_EQ(dialogs.MessageBox(InboundDialogs::Owner::None, u"text", u"title", 0x10),
              IMessageBoxes::IDOK);
    EXPECT_TRUE(inner.Boxes().empty());
    EXPECT_FALSE(windowAsked);
}

} // namespace
