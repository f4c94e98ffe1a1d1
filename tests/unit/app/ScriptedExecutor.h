#pragma once
// appShellExecute as a test scripts it: each call is recorded (from whatever thread makes
// it) and answered by `behaviour`, which by default gives `exitCode` and answers `result`.

#include "app/IShellExecutor.h"

#include <functional>
#include <mutex>
#include <vector>

class ScriptedExecutor : public IShellExecutor {
public:
    struct Call {
        stdstr file;
        stdstr parameters;
        bool wait = false;
        bool withInfo = false;
        bool withExitCode = false;
        int show = -1;
    };

    bool appShellExecute(const stdstr& file, const stdstr& parameters, bool wait,
                         ShellOpenInfo* info, int* exitCode, int show) override {
        {
            std::lock_guard<std::mutex> guard(m_lock);
            m_calls.push_back(
                Call{file, parameters, wait, info != nullptr, exitCode != nullptr, show});
        }
        if (behaviour)
            return behaviour(exitCode);
        if (result && exitCode)
            *exitCode = code;
        return result;
    }

    std::vector<Call> Calls() const {
        std::lock_guard<std::mutex> guard(m_lock);
        return m_calls;
    }

    bool result = true;
    int code = 0;
    std::function<bool(int* exitCode)> behaviour;

private:
    mutable std::mutex m_lock;
    std::vector<Call> m_calls;
};
