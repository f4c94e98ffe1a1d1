// The start dialog's worker posts to its dialog only while the dialog is there.

#include "app/GuardedPostTarget.h"

#include "AppTestApp.h"

#include <QCoreApplication>
#include <QObject>

#include <gtest/gtest.h>

#include <vector>

namespace {

class Receiver : public QObject {
public:
    bool event(QEvent* event) override {
        if (PrivateMessageEvent::IsPrivateMessage(event->type())) {
            const auto* message = static_cast<PrivateMessageEvent*>(event);
            received.push_back(message->Message());
            return true;
        }
        return QObject::event(event);
    }
    std::vector<int> received;
};

} // namespace

TEST(GuardedPostTarget, APostReachesTheTargetThroughItsEventQueue) {
    AppTestApp();
    Receiver receiver;
    GuardedPostTarget target(&receiver);
    EXPECT_TRUE(target.Post(1025));
    EXPECT_TRUE(receiver.received.empty());
    QCoreApplication::sendPostedEvents(&receiver);
    EXPECT_EQ(receiver.received, std::vector<int>{1025});
}

TEST(GuardedPostTarget, APostAfterTheTargetWentIsDropped) {
    AppTestApp();
    Receiver receiver;
    GuardedPostTarget target(&receiver);
    target.Clear();
    EXPECT_FALSE(target.Post(1025));
    QCoreApplication::sendPostedEvents(&receiver);
    EXPECT_TRUE(receiver.received.empty());
}
