#pragma once
// The thread of the inbound pump: a Corvane::Thread whose body is a function of its owner.
// The body does not look at the thread's own stop event (the pump has an exit event of its
// own), so the owner ends the body before this object goes.

#include "foundation/Thread.h"

#include <cstdint>
#include <functional>

class PumpThread : public Corvane::Thread {
public:
    explicit PumpThread(std::function<std::uint32_t()> body);
    // Waits for the body to return, unless called on this very thread.
    ~PumpThread() override;

    std::uint32_t run() override;
    // Whether the caller is the thread that this object holds now.
    bool isCurrentThread() const;
    // shutdown(), except on the thread itself, which cannot wait for its own end.
    void waitForEnd();

private:
    const std::function<std::uint32_t()> m_body;
};
