#include "RecordingSink.h"

#include "foundation/CTraceModuleList.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"

#include "support/RunInChild.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <regex>

namespace {

std::string Narrow(const std::u16string& text) {
    return stdstr::fromTString(text);
}

TEST(TraceLabel, EachLevelHasItsLabel) {
    EXPECT_EQ(TraceLabel(TRACE_ERROR), u"Error: ");
    EXPECT_EQ(TraceLabel(TRACE_LOG), u"Log: ");
    EXPECT_EQ(TraceLabel(TRACE_WARN), u"Warn: ");
    EXPECT_EQ(TraceLabel(TRACE_INFO), u"Info: ");
    EXPECT_EQ(TraceLabel(TRACE_DEBUG), u"Debug: ");
    EXPECT_EQ(TraceLabel(TRACE_FUNC), u"Func: ");
    EXPECT_EQ(TraceLabel(TRACE_DETAIL), u"Detail: ");
    EXPECT_EQ(TraceLabel(TRACE_AUDIT), u"Audit: ");
    EXPECT_EQ(TraceLabel(TRACE_PERIODIC), u"Periodic: ");
    EXPECT_EQ(TraceLabel(TRACE_PERFORMANCE), u"Performance: ");
}

TEST(TraceLabel, LevelZeroIsNoneWithThreeBlanks) {
    EXPECT_EQ(TraceLabel(0), u"None   : ");
}

TEST(TraceLabel, UnknownBitsAreUnknown) {
    EXPECT_EQ(TraceLabel(0x400), u"Unknown: ");
    EXPECT_EQ(TraceLabel(TRACE_RAW), u"Unknown: ");
}

TEST(TraceLabel, WarnAndErrorTogetherReadError) {
    EXPECT_EQ(TraceLabel(TRACE_WARN | TRACE_ERROR), u"Error: ");
}

TEST(TraceLabel, InfoAndLogTogetherReadLog) {
    EXPECT_EQ(TraceLabel(TRACE_INFO | TRACE_LOG), u"Log: ");
}

TEST(TraceLabel, OrderOfPrecedenceIsKept) {
    EXPECT_EQ(TraceLabel(TRACE_AUDIT | TRACE_WARN), u"Warn: ");
    EXPECT_EQ(TraceLabel(TRACE_PERFORMANCE | TRACE_AUDIT), u"Audit: ");
    EXPECT_EQ(TraceLabel(TRACE_PERIODIC | TRACE_PERFORMANCE), u"Performance: ");
    EXPECT_EQ(TraceLabel(TRACE_FUNC | TRACE_PERIODIC), u"Periodic: ");
    EXPECT_EQ(TraceLabel(TRACE_LOG | TRACE_FUNC), u"Func: ");
    EXPECT_EQ(TraceLabel(TRACE_DEBUG | TRACE_DETAIL), u"Debug: ");
    EXPECT_EQ(TraceLabel(TRACE_DEBUG | TRACE_INFO), u"Info: ");
}

TEST(TraceDispatch, LevelZeroWritesNothing) {
    CTraceModuleList list;
    auto* sink = list.Add(std::make_unique<RecordingSink>(0xFFFFFFFF));
    list.Dispatch(0, u"never");
    EXPECT_TRUE(sink->writes.empty());
}

TEST(TraceDispatch, ALineIsPrefixThenMessageWithLineEnd) {
    CTraceModuleList list;
    auto* sink = list.Add(std::make_unique<RecordingSink>(TRACE_ERROR | TRACE_WARN));
    list.Dispatch(TRACE_ERROR, u"CRegistry::Open(0x80000002, x): failed");
    ASSERT_EQ(sink->writes.size(), 2u);
    EXPECT_FALSE(sink->writes[0].second);
    EXPECT_TRUE(std::regex_match(
        Narrow(sink->writes[0].first),
        std::regex(R"(\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2}\.\d{3} \d{5,}: Error: )")))
        << Narrow(sink->writes[0].first);
    EXPECT_EQ(sink->writes[1].first, u"CRegistry::Open(0x80000002, x): failed");
    EXPECT_TRUE(sink->writes[1].second);
}

TEST(TraceDispatch, RawLineHasNoDateThreadOrLabel) {
    CTraceModuleList list;
    auto* sink = list.Add(std::make_unique<RecordingSink>(TRACE_DEBUG));
    list.Dispatch(TRACE_RAW | TRACE_DEBUG, u"as it stands");
    ASSERT_EQ(sink->writes.size(), 1u);
    EXPECT_EQ(sink->writes[0].first, u"as it stands");
    EXPECT_TRUE(sink->writes[0].second);
}

TEST(TraceDispatch, RawLineForNoWantedBitGoesNowhere) {
    CTraceModuleList list;
    auto* sink = list.Add(std::make_unique<RecordingSink>(TRACE_ERROR));
    list.Dispatch(TRACE_RAW | TRACE_DEBUG, u"dropped");
    EXPECT_TRUE(sink->writes.empty());
}

TEST(TraceDispatch, LevelsBelowTheMaskAreNotWritten) {
    CTraceModuleList list;
    auto* sink = list.Add(std::make_unique<RecordingSink>(5));
    list.Dispatch(TRACE_DEBUG, u"debug");
    list.Dispatch(TRACE_INFO, u"info");
    list.Dispatch(TRACE_WARN, u"warn");
    ASSERT_EQ(sink->writes.size(), 2u);
    EXPECT_EQ(sink->writes[1].first, u"warn");
}

TEST(TraceDispatch, PrefixesGoToAllSinksBeforeAnyMessage) {
    CTraceModuleList list;
    auto* first = list.Add(std::make_unique<RecordingSink>(TRACE_ERROR));
    auto* other = list.Add(std::make_unique<RecordingSink>(TRACE_DEBUG));
    auto* second = list.Add(std::make_unique<RecordingSink>(TRACE_ERROR));
    list.Dispatch(TRACE_ERROR, u"m");
    ASSERT_EQ(first->writes.size(), 2u);
    ASSERT_EQ(second->writes.size(), 2u);
    EXPECT_TRUE(other->writes.empty());
    EXPECT_EQ(first->writes[0].first, second->writes[0].first);
}

TEST(TraceDispatch, TheSameSinkIsListedOnce) {
    CTraceModuleList list;
    auto* sink = list.Add(std::make_unique<RecordingSink>(TRACE_ERROR));
    // Handing in a listed sink again changes nothing.
    EXPECT_EQ(list.Add(static_cast<CTraceModule*>(sink)), sink);
    list.Dispatch(TRACE_ERROR, u"once");
    EXPECT_EQ(sink->writes.size(), 2u);
}

TEST(TraceDispatch, TheFilterIsTheUnionOfTheMasks) {
    CTraceModuleList list;
    EXPECT_EQ(list.WantedLevels(), 0u);
    list.Add(std::make_unique<RecordingSink>(TRACE_ERROR));
    auto* sink = list.Add(std::make_unique<RecordingSink>(TRACE_AUDIT));
    EXPECT_EQ(list.WantedLevels(), TRACE_ERROR | TRACE_AUDIT);
    sink->SetLevel(TRACE_FUNC);
    EXPECT_NE(list.WantedLevels() & TRACE_FUNC, 0u);
    list.Dispatch(TRACE_FUNC, u"now wanted");
    EXPECT_EQ(sink->writes.size(), 2u);
}

TEST(TraceGlobal, AFilteredCallReachesNoSinkAndTheFilterFollowsTheSinks) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  auto* sink = TraceAddModule(std::make_unique<RecordingSink>(TRACE_ERROR));
                  const bool filterSet = TraceDetail::g_wantedLevels.load() == TRACE_ERROR;
                  TraceFmt(TRACE_DEBUG, u"%d", 1);
                  TraceMsg(TRACE_INFO, u"no");
                  const bool nothingWritten = sink->writes.empty();
                  TraceFmt(TRACE_ERROR, u"value %d of %s", 7, u"seven");
                  const bool written =
                      sink->writes.size() == 2 && sink->writes[1].first == u"value 7 of seven";
                  return filterSet && nothingWritten && written ? 0 : 1;
              }),
              0);
}

TEST(TraceGlobal, TraceFmtCutsAMessageTo32767Characters) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  auto* sink = TraceAddModule(std::make_unique<RecordingSink>(TRACE_ERROR));
                  const std::u16string longText(40000, u'x');
                  TraceFmt(TRACE_ERROR, u"%s", longText);
                  return sink->writes.size() == 2 && sink->writes[1].first.size() == 32767 ? 0 : 1;
              }),
              0);
}

// A sink kept for the exit handler below; made before the handler is registered, so that
// what it needs of the list's bookkeeping is still there when the handler runs.
std::unique_ptr<RecordingSink> g_lateSink;

void AddASinkAfterTheListIsGone() {
    std::_Exit(TraceAddModule(std::move(g_lateSink)) == nullptr ? 0 : 1);
}

// The process's list is made at the first trace call and destroyed at exit. A handler
// registered before it exists runs after its destruction, and must find the list out of
// reach rather than add to what is gone.
TEST(TraceGlobal, AfterTheListIsDestroyedAtExitTraceAddModuleReturnsNull) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            g_lateSink = std::make_unique<RecordingSink>(TRACE_ERROR);
            std::atexit(AddASinkAfterTheListIsGone);
            TraceAddModule(std::make_unique<RecordingSink>(TRACE_ERROR));
            std::exit(3);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
