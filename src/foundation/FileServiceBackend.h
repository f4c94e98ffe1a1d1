#pragma once
// FileServiceBackend: the service's state from files, for machines without systemd and for
// sandbox roots. The service exists when its unit file $ROOT/etc/systemd/system/<name>.service
// exists. Its pid file $ROOT/run/<name>.pid, written by the service, tells the state: the
// service holds an exclusive flock on it for its whole life and writes the pid and
// "starting", "running" or "stopping" on two lines. Running: the lock is held and the text
// says "running". Stopped: nobody holds the lock (or there is no pid file), whatever the
// text says. Anything else while the lock is held (starting, stopping, a text being
// rewritten) is pending. The kernel drops the lock when the service dies.

#include "foundation/ServiceBackend.h"

#include <string>

class FileServiceBackend : public ServiceBackend {
public:
    // The sandbox root is read at each question, so one object serves any root.
    FileServiceBackend() = default;

    Answer ask(const std::string& machine, const std::string& service, bool withStatus) override;

    static std::string unitFolder(const std::string& root);
    static std::string pidFolder(const std::string& root);
    static std::string unitFilePath(const std::string& root, const std::string& service);
    static std::string pidFilePath(const std::string& root, const std::string& service);

    // The state that a pid file's text and lock give.
    static State stateOf(bool locked, const std::string& text);
};
