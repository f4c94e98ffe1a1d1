#pragma once
// What ServiceManager asks of the service machinery of a platform: open the manager, open
// the service and, if wanted, read its state. Each backend answers these three steps in its
// own way (systemd over D-Bus, or the unit and pid files); the trace lines and the default
// answers stay with ServiceManager, so every backend fails in the same words. One backend
// serves every ServiceManager of the process, on any thread: it keeps nothing between calls.

#include <string>

class ServiceBackend {
public:
    // The step that failed, named as the enquiry's trace lines name it.
    enum class Step { None, Manager, Service, Status };
    enum class State { Stopped, Running, Pending };

    struct Answer {
        Step failedStep = Step::None;
        int error = 0; // errno of the failed step
        State state = State::Stopped;

        bool failed() const { return failedStep != Step::None; }
        static Answer failure(Step step, int error) { return Answer{step, error, State::Stopped}; }
    };

    virtual ~ServiceBackend() = default;

    // `machine` is empty for this machine; names are UTF-8. Without `withStatus` the state
    // is not read and an answer without a failed step means the service exists.
    virtual Answer ask(const std::string& machine, const std::string& service, bool withStatus) = 0;
};
