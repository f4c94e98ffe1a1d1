#include "StatisticsFetcher.h"

StatisticsFetcher::StatisticsFetcher(Query query, Delivery deliver)
    : Corvane::Thread(true), m_query(std::move(query)), m_deliver(std::move(deliver)) {
    start();
}

StatisticsFetcher::~StatisticsFetcher() {
    stop();
    shutdown();
}

void StatisticsFetcher::Request() {
    {
        const std::lock_guard lock(m_mutex);
        m_pending = true;
    }
    m_wake.notify_one();
}

void StatisticsFetcher::stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_wake.notify_one();
    Corvane::Thread::stop();
}

std::uint32_t StatisticsFetcher::run() {
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_pending || m_quit; });
            if (m_quit)
                return 0;
            m_pending = false;
        }
        StatisticsAnswer answer;
        try {
            answer = m_query();
        } catch (...) {
            // No memory for the question: the page keeps what it shows.
            continue;
        }
        m_deliver(answer);
    }
}
