#pragma once
// The boxes and the reinstall prompt, answered from a script. Each call goes into the journal
// as "box <owner> [<text>] [<title>] <type>" or "prompt", with the thread it came on kept
// aside; a hook can hold a box open, as a user who has not answered yet.

#include "EventJournal.h"
#include "messaging/InboundDialogs.h"

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class ScriptedDialogs : public InboundDialogs {
public:
    explicit ScriptedDialogs(EventJournal& journal) : m_journal(journal) {}

    int MessageBox(Owner owner, const stdstr& text, const stdstr& title,
                   std::uint32_t type) override {
        m_journal.Add("box " + std::string(owner == Owner::None ? "none" : "main") + " [" +
                      EventJournal::Narrow(text) + "] [" + EventJournal::Narrow(title) + "] " +
                      std::to_string(type));
        std::function<void()> hook;
        int answer = IDOK;
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_boxThreads.push_back(std::this_thread::get_id());
            hook = onBox;
            if (!boxAnswers.empty()) {
                answer = boxAnswers.front();
                boxAnswers.pop_front();
            }
        }
        if (hook)
            hook();
        return answer;
    }

    int ReinstallPrompt() override {
        m_journal.Add("prompt");
        std::lock_guard<std::mutex> lock(m_mutex);
        if (promptAnswers.empty())
            return ReinstallAllow;
        const int answer = promptAnswers.front();
        promptAnswers.pop_front();
        return answer;
    }

    std::vector<std::thread::id> BoxThreads() {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_boxThreads;
    }

    // Set these before the dialogs are used. An empty queue answers IDOK, or Allow.
    std::deque<int> boxAnswers;
    std::deque<int> promptAnswers;
    std::function<void()> onBox;

private:
    EventJournal& m_journal;
    std::mutex m_mutex;
    std::vector<std::thread::id> m_boxThreads;
};
