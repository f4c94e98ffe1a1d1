#include "messaging/PumpThread.h"

#include <unistd.h>
#include <utility>

PumpThread::PumpThread(std::function<std::uint32_t()> body)
    : Corvane::Thread(true), m_body(std::move(body)) {}

PumpThread::~PumpThread() {
    // The base's destructor would wait as well, but only after m_body is gone.
    waitForEnd();
}

std::uint32_t PumpThread::run() {
    return m_body();
}

bool PumpThread::isCurrentThread() const {
    const int id = threadId();
    return id != 0 && id == static_cast<int>(::gettid());
}

void PumpThread::waitForEnd() {
    if (isCurrentThread())
        return;
    shutdown();
}
