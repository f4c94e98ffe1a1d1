// The RPC object's table of the host's handlers: a call reaches the handler of its id and no
// other, with null out parameters; dropping a handler waits for its call on another thread.
#include "HandlerTable.h"

#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace {

std::vector<std::uint32_t> g_calls;
std::atomic<bool> g_inside{false};
std::atomic<bool> g_release{false};

template <std::uint32_t Id>
std::int32_t Record(const std::uint8_t*, std::uint32_t, std::uint8_t** reply,
                    std::int32_t* replyLength) {
    EXPECT_EQ(*reply, nullptr);
    EXPECT_EQ(*replyLength, 0);
    g_calls.push_back(Id);
    return 1;
}

std::int32_t Slow(const std::uint8_t*, std::uint32_t, std::uint8_t**, std::int32_t*) {
    g_inside = true;
    TestSupport::WaitFor([] { return g_release.load(); });
    g_inside = false;
    return 1;
}

std::int32_t Throws(const std::uint8_t*, std::uint32_t, std::uint8_t**, std::int32_t*) {
    throw 42;
}

} // namespace

TEST(HandlerTable, ACallReachesOnlyTheHandlerOfItsId) {
    g_calls.clear();
    HandlerTable table;
    table.Register(256, &Record<256>);
    table.Register(258, &Record<258>);
    const std::uint8_t data[2] = {'<', 0};
    EXPECT_TRUE(table.Dispatch(258, data, 2));
    EXPECT_TRUE(table.Dispatch(256, data, 2));
    EXPECT_FALSE(table.Dispatch(260, data, 2));
    EXPECT_EQ(g_calls, (std::vector<std::uint32_t>{258, 256}));
}

TEST(HandlerTable, ALaterRegistrationReplacesTheHandlerAndANullOneDropsIt) {
    g_calls.clear();
    HandlerTable table;
    table.Register(256, &Record<256>);
    table.Register(256, &Record<999>);
    EXPECT_TRUE(table.Dispatch(256, nullptr, 0));
    table.Register(256, nullptr);
    EXPECT_FALSE(table.Has(256));
    EXPECT_FALSE(table.Dispatch(256, nullptr, 0));
    EXPECT_EQ(g_calls, std::vector<std::uint32_t>{999});
}

TEST(HandlerTable, UnregisteringAnIdThatHasNoHandlerSaysSo) {
    HandlerTable table;
    table.Register(256, &Record<256>);
    EXPECT_TRUE(table.Unregister(256));
    EXPECT_FALSE(table.Unregister(256));
}

TEST(HandlerTable, AThrowingHandlerDoesNotEndTheDispatch) {
    HandlerTable table;
    table.Register(261, &Throws);
    EXPECT_FALSE(table.Dispatch(261, nullptr, 0));
}

TEST(HandlerTable, UnregisteringWaitsForACallInProgressOnAnotherThread) {
    g_inside = false;
    g_release = false;
    HandlerTable table;
    table.Register(265, &Slow);
    std::thread reader([&] { table.Dispatch(265, nullptr, 0); });
    ASSERT_TRUE(TestSupport::WaitFor([] { return g_inside.load(); }));
    auto dropped = std::async(std::launch::async, [&] { return table.Unregister(265); });
    // Still inside the handler: the drop must not have returned.
    EXPECT_EQ(dropped.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    g_release = true;
    EXPECT_TRUE(dropped.get());
    EXPECT_FALSE(g_inside.load());
    reader.join();
}
