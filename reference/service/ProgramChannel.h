#pragma once
// The way from the service's handlers to the connected programs: a call sent to every one
// of them. The daemon provides it; the handlers need nothing else of it.

#include <cstddef>

class FieldMessage;

class ProgramChannel {
public:
    // Sends `message` as an inbound call to every connected program (not to control
    // clients, nor to refused peers), records it, and returns to how many.
    virtual std::size_t broadcast(const FieldMessage& message) = 0;
    virtual std::size_t programCount() const = 0;

protected:
    ~ProgramChannel() = default;
};
