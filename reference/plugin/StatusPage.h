#pragma once
// The Status page: whether spam filtering is on (with the switch), whether the filter
// service answers, and how many messages it examined and how many of them were spam. The
// filter state comes from the main window (get code 5, set code 7); the service's state from
// private message 1062 and from the page's own questions; the counts from the service's
// Statistics message, asked on a thread of the page's own so that the page never waits for
// the service. Private messages 1030, 1031 and 1032 refresh it.

#include "HostWindow.h"
#include "PluginPage.h"
#include "StatisticsFetcher.h"

#include <QDateTime>

#include <memory>
#include <optional>

class QLabel;
class QProgressBar;
class QPushButton;

class StatusPage final : public PluginPage {
public:
    StatusPage(PluginPageId id, HostWindow host, StatisticsFetcher::Query query, QWidget* parent);
    ~StatusPage() override;

    void Activate() override;
    // Reads the filter state and asks for the counts.
    void Refresh();

protected:
    PrivateMessageEvent::Result OnPrivateMessage(int message, PrivateMessageEvent::WParam wParam,
                                                 PrivateMessageEvent::LParam lParam) override;

private:
    void BuildLayout();
    void ShowFilterState();
    void ShowService(std::optional<bool> up);
    void ShowAnswer(const StatisticsAnswer& answer);
    void ShowUpdated();
    void ToggleFilter();

    HostWindow m_host;
    std::optional<bool> m_filterOn;
    std::optional<bool> m_serviceUp;
    QDateTime m_countsTime;

    QLabel* m_filterLamp = nullptr;
    QLabel* m_filterText = nullptr;
    QPushButton* m_filterButton = nullptr;
    QLabel* m_serviceLamp = nullptr;
    QLabel* m_serviceText = nullptr;
    QLabel* m_examined = nullptr;
    QLabel* m_spam = nullptr;
    QProgressBar* m_share = nullptr;
    QLabel* m_shareText = nullptr;
    QLabel* m_updated = nullptr;

    // Stopped first in the destructor: its thread calls back into the page.
    std::unique_ptr<StatisticsFetcher> m_fetcher;
};
