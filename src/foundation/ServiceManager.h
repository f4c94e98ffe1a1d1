#pragma once
// ServiceManager: the three questions that the supervision of the filter service asks about
// a service (does it exist, is it running, is it stopped). It holds nothing open between
// calls, so an object costs nothing to make. A question that cannot be answered is traced
// and gets the safe default: "does not exist", "not started", and "stopped".

#include "foundation/stdstr.h"

#include <memory>

class ServiceBackend;

class ServiceManager {
public:
    // An empty `machine` means this one.
    explicit ServiceManager(const stdstr& machine = stdstr());
    // Asks `backend` instead of the one that the process chose (see ServiceBackendChoice).
    ServiceManager(const stdstr& machine, std::shared_ptr<ServiceBackend> backend);
    virtual ~ServiceManager();

    bool ServiceExists(const stdstr& name);
    bool ServiceHasStarted(const stdstr& name);
    bool ServiceHasStopped(const stdstr& name);

private:
    std::shared_ptr<ServiceBackend> backend() const;

    stdstr m_machine;
    std::shared_ptr<ServiceBackend> m_backend;
};
