#pragma once
// Asks for the mail counts on a thread of its own, so that a slow or absent service never
// holds up the page that shows them: Request() returns at once, the question runs on the
// thread, and the answer goes to the delivery function on that thread. Requests made while a
// question runs are folded into one more question.

#include "StatisticsAnswer.h"

#include "foundation/Thread.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

class StatisticsFetcher : public Corvane::Thread {
public:
    using Query = std::function<StatisticsAnswer()>;
    using Delivery = std::function<void(const StatisticsAnswer&)>;

    StatisticsFetcher(Query query, Delivery deliver);
    // Waits for a question in progress (at most the RPC object's time-out).
    ~StatisticsFetcher() override;
    StatisticsFetcher(const StatisticsFetcher&) = delete;
    StatisticsFetcher& operator=(const StatisticsFetcher&) = delete;

    void Request();
    void stop() override;
    std::uint32_t run() override;

private:
    Query m_query;
    Delivery m_deliver;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_pending = false;
    bool m_quit = false;
};
