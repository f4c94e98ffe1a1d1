#pragma once
// The host's handlers by message id, as RegisterHandler and UnregisterHandler leave them, and
// the dispatch of one inbound call to the handler of its id, and to no other. A handler runs
// outside the table's lock, so that it may register or drop handlers itself; dropping the
// handler of an id waits for a call of that id that runs on another thread, so that the
// host may unload the code behind it once UnregisterHandler has returned.

#include "mainwindow/RpcContract.h"

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <thread>

class HandlerTable {
public:
    // Binds `handler` to `messageId`, replacing an earlier one; a null handler drops the id.
    void Register(std::uint32_t messageId, RPCHandler handler);
    // Drops the handler of `messageId`; false when there was none.
    bool Unregister(std::uint32_t messageId);
    // Calls the handler of `messageId` with the call's bytes, giving it null out parameters
    // (the host never replies, and a reply would have nobody to go to). False when no
    // handler is bound; an exception out of the handler is swallowed (it would end the
    // reader thread) and also answers false.
    bool Dispatch(std::uint32_t messageId, const std::uint8_t* data, std::uint32_t byteLength);
    bool Has(std::uint32_t messageId) const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_idle;
    std::map<std::uint32_t, RPCHandler> m_handlers;
    // The call in progress, if any: its id and the thread it runs on.
    bool m_busy = false;
    std::uint32_t m_busyId = 0;
    std::thread::id m_busyThread;
};
