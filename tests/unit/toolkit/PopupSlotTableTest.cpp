// The ten places of the summary pop-ups.

#include "toolkit/PopupSlotTable.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

TEST(PopupSlotTable, SlotsAreClaimedFromTheLowestUp) {
    PopupSlotTable table;
    EXPECT_EQ(table.Claim(), 0);
    EXPECT_EQ(table.Claim(), 1);
    EXPECT_EQ(table.Claim(), 2);
    table.Release(1);
    EXPECT_FALSE(table.IsTaken(1));
    EXPECT_EQ(table.Claim(), 1);
    EXPECT_EQ(table.Claim(), 3);
}

TEST(PopupSlotTable, TheEleventhClaimGetsSlotZeroWithoutMarkingAnything) {
    PopupSlotTable table;
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(table.Claim(), i);
    EXPECT_EQ(table.Claim(), 0);
    // The eleventh's end clears flag 0 while the first pop-up is still there...
    table.Release(0);
    EXPECT_FALSE(table.IsTaken(0));
    // ...so the next one goes to slot 0 again.
    EXPECT_EQ(table.Claim(), 0);
    for (int i = 1; i < 10; ++i)
        EXPECT_TRUE(table.IsTaken(i));
}

TEST(PopupSlotTable, OutOfRangeSlotsAreIgnored) {
    PopupSlotTable table;
    table.Release(-1);
    table.Release(10);
    EXPECT_FALSE(table.IsTaken(10));
    EXPECT_EQ(table.Claim(), 0);
}

TEST(PopupSlotTable, ClaimsFromManyThreadsGetDistinctSlots) {
    PopupSlotTable table;
    std::vector<int> got(10, -1);
    std::vector<std::thread> threads;
    for (int i = 0; i < 10; ++i)
        threads.emplace_back(
            [&table, &got, i] { got[static_cast<std::size_t>(i)] = table.Claim(); });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(std::set<int>(got.begin(), got.end()).size(), 10u);
}
