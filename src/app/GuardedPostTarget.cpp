#include "app/GuardedPostTarget.h"

GuardedPostTarget::GuardedPostTarget(QObject* target) : m_target(target) {}

bool GuardedPostTarget::Post(int message, PrivateMessageEvent::WParam wParam,
                             PrivateMessageEvent::LParam lParam) {
    std::lock_guard<std::mutex> guard(m_lock);
    return PrivateMessageEvent::Post(m_target, message, wParam, lParam);
}

void GuardedPostTarget::Clear() {
    std::lock_guard<std::mutex> guard(m_lock);
    m_target = nullptr;
}
