#pragma once
// The three questions that supervision asks about the filter service, each asked anew at
// every decision: the program keeps no state of the service. The running program answers
// them with ServiceManager (systemd, or the file backend in a sandbox root); tests answer
// them from a script. A query that fails reads as "stopped".

#include "foundation/stdstr.h"

class IServiceQueries {
public:
    virtual bool ServiceExists(const stdstr& name) = 0;
    // Running, and only running.
    virtual bool ServiceHasStarted(const stdstr& name) = 0;
    // Stopped (also when the state cannot be had). A service that is starting or stopping
    // is neither started nor stopped.
    virtual bool ServiceHasStopped(const stdstr& name) = 0;

    virtual ~IServiceQueries() = default;

protected:
    IServiceQueries() = default;
    IServiceQueries(const IServiceQueries&) = default;
    IServiceQueries& operator=(const IServiceQueries&) = default;
};
