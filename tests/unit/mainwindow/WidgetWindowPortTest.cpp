// The Qt window behind the Qt-free libraries' WindowPort: posts, sends from this thread and
// from others, and a window that is gone.

#include "mainwindow/WidgetWindowPort.h"

#include "MainWindowTestApp.h"
#include "support/WaitFor.h"
#include "toolkit/PrivateMessageEvent.h"

#include <QCoreApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

// Answers each private message with its number plus wParam, and writes it down.
class Receiver : public QWidget {
public:
    std::vector<std::pair<int, std::uintptr_t>> received;

protected:
    bool event(QEvent* event) override {
        if (PrivateMessageEvent::IsPrivateMessage(static_cast<int>(event->type()))) {
            auto* message = static_cast<PrivateMessageEvent*>(event);
            received.emplace_back(message->Message(), message->wParam());
            message->SetResult(message->Message() + static_cast<std::intptr_t>(message->wParam()));
            return true;
        }
        return QWidget::event(event);
    }
};

} // namespace

TEST(WidgetWindowPort, APostArrivesOnTheNextTurnOfTheLoop) {
    MainWindowTestApp();
    Receiver window;
    WidgetWindowPort port(&window);
    EXPECT_TRUE(port.isWindow());
    EXPECT_TRUE(port.post(1057, 1, 0));
    EXPECT_TRUE(window.received.empty());
    EXPECT_TRUE(TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return !window.received.empty();
    }));
    EXPECT_EQ(window.received.front(), std::make_pair(1057, std::uintptr_t{1}));
}

TEST(WidgetWindowPort, ASendOnTheWindowsThreadIsAnsweredAtOnce) {
    MainWindowTestApp();
    Receiver window;
    WidgetWindowPort port(&window);
    EXPECT_EQ(port.send(1062, 1, 0), 1063);
    EXPECT_EQ(window.received.size(), 1u);
}

TEST(WidgetWindowPort, ASendFromAnotherThreadWaitsForTheAnswer) {
    MainWindowTestApp();
    Receiver window;
    WidgetWindowPort port(&window);
    std::atomic<std::intptr_t> answer{-1};
    std::thread sender([&] { answer = port.send(1058, 0, 0); });
    EXPECT_TRUE(TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return answer.load() != -1;
    }));
    sender.join();
    EXPECT_EQ(answer.load(), 1058);
}

TEST(WidgetWindowPort, AWindowThatIsGoneIsNoWindow) {
    MainWindowTestApp();
    auto window = std::make_unique<Receiver>();
    WidgetWindowPort port(window.get());
    window.reset();
    EXPECT_FALSE(port.isWindow());
    EXPECT_FALSE(port.post(1057, 1, 0));
    EXPECT_EQ(port.send(1062, 1, 0), 0);
}

TEST(WidgetWindowPort, APortToNoWindowTakesCallsAndDoesNothing) {
    MainWindowTestApp();
    WidgetWindowPort port;
    EXPECT_FALSE(port.isWindow());
    EXPECT_FALSE(port.post(1057, 1, 0));
    EXPECT_EQ(port.send(1062, 1, 0), 0);
}

TEST(WidgetWindowPort, ThePortCanBePointedElsewhere) {
    MainWindowTestApp();
    Receiver first;
    Receiver second;
    WidgetWindowPort port(&first);
    port.SetWindow(&second);
    EXPECT_EQ(port.send(1030, 0, 0), 1030);
    EXPECT_TRUE(first.received.empty());
    EXPECT_EQ(second.received.size(), 1u);
    port.SetWindow(nullptr);
    EXPECT_FALSE(port.isWindow());
}
