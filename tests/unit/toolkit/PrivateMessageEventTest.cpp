// Private window messages as Qt events: sent with an answer, posted to the queue, and sent
// from another thread with the sender waiting for the answer.

#include "toolkit/PrivateMessageEvent.h"
#include "unit/toolkit/ToolkitTestApp.h"

#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QObject>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// Answers every private message with wParam + lParam and remembers the order.
class Receiver : public QObject {
public:
    bool event(QEvent* e) override {
        if (!PrivateMessageEvent::IsPrivateMessage(static_cast<int>(e->type())))
            return QObject::event(e);
        auto* message = static_cast<PrivateMessageEvent*>(e);
        received.push_back(message->Message());
        message->SetResult(static_cast<PrivateMessageEvent::Result>(message->wParam()) +
                           message->lParam());
        return true;
    }
    std::vector<int> received;
};

} // namespace

TEST(PrivateMessageEvent, CarriesItsNumberAsTheEventType) {
    const PrivateMessageEvent event(1480, 7, -3);
    EXPECT_EQ(static_cast<int>(event.type()), 1480);
    EXPECT_EQ(event.Message(), 1480);
    EXPECT_EQ(event.wParam(), 7u);
    EXPECT_EQ(event.lParam(), -3);
    EXPECT_EQ(event.GetResult(), 0);
}

TEST(PrivateMessageEvent, PrivateNumbersRunFrom1025To1481) {
    EXPECT_FALSE(PrivateMessageEvent::IsPrivateMessage(1024));
    EXPECT_TRUE(PrivateMessageEvent::IsPrivateMessage(1025));
    EXPECT_TRUE(PrivateMessageEvent::IsPrivateMessage(1481));
    EXPECT_FALSE(PrivateMessageEvent::IsPrivateMessage(1482));
}

TEST(PrivateMessageEvent, SendDeliversAtOnceAndReturnsTheAnswer) {
    ToolkitTestApp();
    Receiver receiver;
    EXPECT_EQ(PrivateMessageEvent::Send(&receiver, 1061, 40, 2), 42);
    EXPECT_EQ(receiver.received, (std::vector<int>{1061}));
}

TEST(PrivateMessageEvent, SendToNoTargetAnswersZero) {
    EXPECT_EQ(PrivateMessageEvent::Send(nullptr, 1061, 40, 2), 0);
    EXPECT_FALSE(PrivateMessageEvent::Post(nullptr, 1061, 40, 2));
}

TEST(PrivateMessageEvent, PostIsDeliveredFromTheQueueInOrder) {
    ToolkitTestApp();
    Receiver receiver;
    EXPECT_TRUE(PrivateMessageEvent::Post(&receiver, 1057));
    EXPECT_TRUE(PrivateMessageEvent::Post(&receiver, 1032));
    EXPECT_TRUE(receiver.received.empty());
    QCoreApplication::sendPostedEvents(&receiver);
    EXPECT_EQ(receiver.received, (std::vector<int>{1057, 1032}));
}

TEST(PrivateMessageEvent, SendFromAnotherThreadWaitsForTheAnswer) {
    ToolkitTestApp();
    Receiver receiver;
    std::atomic<PrivateMessageEvent::Result> answer{-1};
    std::thread worker(
        [&receiver, &answer] { answer = PrivateMessageEvent::Send(&receiver, 1033, 5, 6); });
    // The answer can only come from this thread's event loop.
    const bool answered = TestSupport::WaitFor([&answer] {
        QCoreApplication::processEvents();
        return answer.load() != -1;
    });
    worker.join();
    ASSERT_TRUE(answered);
    EXPECT_EQ(answer.load(), 11);
    EXPECT_EQ(receiver.received, (std::vector<int>{1033}));
}

TEST(PrivateMessageEvent, WindowHandleLeadsBackToTheWindow) {
    ToolkitTestApp();
    Receiver receiver;
    const auto handle = PrivateMessageEvent::Handle(&receiver);
    EXPECT_NE(handle, 0u);
    EXPECT_EQ(PrivateMessageEvent::Object(handle), &receiver);
    EXPECT_EQ(PrivateMessageEvent::Object(0), nullptr);
}
