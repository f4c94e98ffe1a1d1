#pragma once
// A service whose state a test sets, answering supervision's three questions, and the dialog
// runner and clock around it: the runner records each dialog and answers a scripted result
// (optionally changing the service's state, as the real executable would), the clock records
// each wait and runs a hook instead of waiting.

#include "app/IServiceDialogRunner.h"
#include "app/IServiceQueries.h"

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class ScriptedService {
public:
    enum class State { Missing, Stopped, Starting, Running, Stopping };

    class Queries : public IServiceQueries {
    public:
        explicit Queries(ScriptedService& service) : m_service(service) {}
        bool ServiceExists(const stdstr& name) override {
            m_service.names.push_back(name);
            ++m_service.existsCalls;
            return m_service.state != State::Missing;
        }
        bool ServiceHasStarted(const stdstr& name) override {
            m_service.names.push_back(name);
            ++m_service.startedCalls;
            return m_service.state == State::Running;
        }
        bool ServiceHasStopped(const stdstr& name) override {
            m_service.names.push_back(name);
            ++m_service.stoppedCalls;
            return m_service.state == State::Stopped || m_service.state == State::Missing;
        }

    private:
        ScriptedService& m_service;
    };

    // The factory that supervision is given.
    std::function<std::unique_ptr<IServiceQueries>()> Factory() {
        return [this] {
            ++managersMade;
            return std::make_unique<Queries>(*this);
        };
    }

    State state = State::Stopped;
    int managersMade = 0;
    int existsCalls = 0;
    int startedCalls = 0;
    int stoppedCalls = 0;
    std::vector<stdstr> names;
};

class ScriptedDialogs : public IServiceDialogRunner {
public:
    int RunServiceDialog(bool start) override {
        runs.push_back(start);
        if (onRun)
            onRun(start);
        return result;
    }

    int result = 0;
    std::function<void(bool start)> onRun;
    std::vector<bool> runs;
};

class RecordingClock {
public:
    std::function<void(std::chrono::milliseconds)> Sleep() {
        return [this](std::chrono::milliseconds duration) {
            waits.push_back(duration);
            if (onWait)
                onWait(waits.size());
        };
    }

    std::vector<std::chrono::milliseconds> waits;
    // Called after each wait with the number of waits so far.
    std::function<void(std::size_t)> onWait;
};
