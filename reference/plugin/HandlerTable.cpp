#include "HandlerTable.h"

void HandlerTable::Register(std::uint32_t messageId, RPCHandler handler) {
    if (handler == nullptr) {
        Unregister(messageId);
        return;
    }
    const std::lock_guard lock(m_mutex);
    m_handlers[messageId] = handler;
}

bool HandlerTable::Unregister(std::uint32_t messageId) {
    std::unique_lock lock(m_mutex);
    const bool found = m_handlers.erase(messageId) != 0;
    // A handler that drops its own id must not wait for itself.
    if (m_busyThread != std::this_thread::get_id())
        m_idle.wait(lock, [&] { return !m_busy || m_busyId != messageId; });
    return found;
}

bool HandlerTable::Has(std::uint32_t messageId) const {
    const std::lock_guard lock(m_mutex);
    return m_handlers.count(messageId) != 0;
}

bool HandlerTable::Dispatch(std::uint32_t messageId, const std::uint8_t* data,
                            std::uint32_t byteLength) {
    RPCHandler handler = nullptr;
    {
        std::unique_lock lock(m_mutex);
        const auto found = m_handlers.find(messageId);
        if (found == m_handlers.end())
            return false;
        handler = found->second;
        // One call at a time: the calls keep the order in which they came.
        m_idle.wait(lock, [&] { return !m_busy; });
        m_busy = true;
        m_busyId = messageId;
        m_busyThread = std::this_thread::get_id();
    }
    bool handled = true;
    std::uint8_t* reply = nullptr;
    std::int32_t replyLength = 0;
    try {
        handler(data, byteLength, &reply, &replyLength);
    } catch (...) {
        handled = false;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_busy = false;
        m_busyThread = std::thread::id();
    }
    m_idle.notify_all();
    return handled;
}
