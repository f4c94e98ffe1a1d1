// The start dialog's bar: 0 to 120 in steps of 2, running by itself up to 114.

#include "app/ServiceProgress.h"

#include <gtest/gtest.h>

TEST(ServiceProgress, TheBarStartsAtTheBeginningOfItsRange) {
    const ServiceProgress progress;
    EXPECT_EQ(progress.Position(), 0);
    EXPECT_EQ(ServiceProgress::RangeMin, 0);
    EXPECT_EQ(ServiceProgress::RangeMax, 120);
    EXPECT_EQ(ServiceProgress::Step, 2);
    EXPECT_EQ(ServiceProgress::Limit, 114);
}

TEST(ServiceProgress, EachTickStepsByTwo) {
    ServiceProgress progress;
    EXPECT_TRUE(progress.Tick());
    EXPECT_EQ(progress.Position(), 2);
    EXPECT_TRUE(progress.Tick());
    EXPECT_EQ(progress.Position(), 4);
}

TEST(ServiceProgress, TheBarReaches114After57TicksAndWaitsThere) {
    ServiceProgress progress;
    int moves = 0;
    for (int tick = 0; tick < 200; ++tick)
        moves += progress.Tick() ? 1 : 0;
    EXPECT_EQ(moves, 57);
    EXPECT_EQ(progress.Position(), 114);
}

TEST(ServiceProgress, TheFinishFillsTheBar) {
    ServiceProgress progress;
    for (int tick = 0; tick < 10; ++tick)
        progress.Tick();
    progress.Finish();
    EXPECT_EQ(progress.Position(), 120);
    EXPECT_FALSE(progress.Tick());
    EXPECT_EQ(progress.Position(), 120);
}
