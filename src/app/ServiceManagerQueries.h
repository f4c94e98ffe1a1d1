#pragma once
// The service questions of supervision answered by the foundation's ServiceManager for this
// machine: systemd where it runs, the unit and pid files in a sandbox root or without it.
// The application makes one for each supervision call, as one ServiceManager lives through
// each of them.

#include "app/IServiceQueries.h"
#include "foundation/ServiceManager.h"

class ServiceManagerQueries : public IServiceQueries {
public:
    ServiceManagerQueries() = default;

    bool ServiceExists(const stdstr& name) override;
    bool ServiceHasStarted(const stdstr& name) override;
    bool ServiceHasStopped(const stdstr& name) override;

private:
    ServiceManager m_manager;
};
