// A window's timers by id: starting, replacing, stopping, and turning a tick back into the id.

#include "mainwindow/WindowTimers.h"

#include "MainWindowTestApp.h"
#include "support/WaitFor.h"

#include <QCoreApplication>
#include <QObject>
#include <QTimerEvent>

#include <gtest/gtest.h>

#include <map>

namespace {

// Counts its ticks by the timers' own ids.
class Ticker : public QObject {
public:
    Ticker() : timers(*this) {}
    WindowTimers timers;
    std::map<int, int> ticks;

protected:
    void timerEvent(QTimerEvent* event) override {
        if (const auto id = timers.IdOf(event->timerId()))
            ++ticks[*id];
    }
};

bool TicksOf(Ticker& ticker, int id, int count) {
    return TestSupport::WaitFor([&] {
        QCoreApplication::processEvents();
        return ticker.ticks[id] >= count;
    });
}

} // namespace

TEST(WindowTimers, ATimerRunsWithItsPeriodUntilKilled) {
    MainWindowTestApp();
    Ticker ticker;
    ticker.timers.SetTimer(401, 5);
    EXPECT_TRUE(ticker.timers.IsActive(401));
    EXPECT_EQ(ticker.timers.Period(401), 5);
    EXPECT_TRUE(TicksOf(ticker, 401, 2));
    EXPECT_TRUE(ticker.timers.KillTimer(401));
    EXPECT_FALSE(ticker.timers.IsActive(401));
    EXPECT_FALSE(ticker.timers.Period(401).has_value());
    EXPECT_FALSE(ticker.timers.KillTimer(401));
}

TEST(WindowTimers, SettingAnIdAgainReplacesTheTimer) {
    MainWindowTestApp();
    Ticker ticker;
    ticker.timers.SetTimer(400, 60000);
    ticker.timers.SetTimer(400, 5);
    EXPECT_EQ(ticker.timers.ActiveIds(), std::vector<int>{400});
    EXPECT_EQ(ticker.timers.Period(400), 5);
    // The new period counts: a minute-long timer would not tick here.
    EXPECT_TRUE(TicksOf(ticker, 400, 1));
}

TEST(WindowTimers, IdsAreKeptApartAndListedInOrder) {
    MainWindowTestApp();
    Ticker ticker;
    ticker.timers.SetTimer(401, 1000);
    ticker.timers.SetTimer(1, 110);
    ticker.timers.SetTimer(399, 10000);
    EXPECT_EQ(ticker.timers.ActiveIds(), (std::vector<int>{1, 399, 401}));
    EXPECT_EQ(ticker.timers.Period(1), 110);
    EXPECT_EQ(ticker.timers.Period(399), 10000);
    ticker.timers.KillAll();
    EXPECT_TRUE(ticker.timers.ActiveIds().empty());
}

TEST(WindowTimers, ATickOfAnotherTimerIsNotOneOfThese) {
    MainWindowTestApp();
    Ticker ticker;
    EXPECT_FALSE(ticker.timers.IdOf(12345).has_value());
    ticker.timers.SetTimer(399, 10000);
    const int foreign = ticker.startTimer(10000);
    EXPECT_FALSE(ticker.timers.IdOf(foreign).has_value());
    ticker.killTimer(foreign);
}
