#pragma once
// The one thing that the start dialog's worker may do to the dialog: post it a private
// message. The worker holds this object, not the dialog: the dialog clears it when it goes,
// and a post after that is dropped instead of reaching a destroyed window. (A worker given up
// by the dialog may still run on; see StartServiceWorker.)

#include "toolkit/PrivateMessageEvent.h"

#include <mutex>

class QObject;

class GuardedPostTarget {
public:
    explicit GuardedPostTarget(QObject* target);
    GuardedPostTarget(const GuardedPostTarget&) = delete;
    GuardedPostTarget& operator=(const GuardedPostTarget&) = delete;

    // Queues the message for the target (any thread); false once the target is gone.
    bool Post(int message, PrivateMessageEvent::WParam wParam = 0,
              PrivateMessageEvent::LParam lParam = 0);
    // From the target's thread, before it is destroyed.
    void Clear();

private:
    std::mutex m_lock;
    QObject* m_target;
};
