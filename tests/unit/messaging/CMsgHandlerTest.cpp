// CMsgHandler: the inbound pump's queue and thread, with and without a main window, its order
// under a blocking dialog and under a burst, and every trace line of its loop.
#include "messaging/CMsgHandler.h"

#include "CountedMessage.h"
#include "EnglishLocalizerEnvironment.h"
#include "EventJournal.h"
#include "InboundEnvelopes.h"
#include "RecordingWindowPort.h"
#include "ScriptedDialogs.h"
#include "ScriptedLauncher.h"
#include "ScriptedReboot.h"
#include "UserTexts.h"
#include "messaging/ComponentFailureResponder.h"
#include "messaging/InboundHandlers.h"
#include "messaging/LspReinstaller.h"
#include "messaging/MainWindowPort.h"
#include "messaging/enumMSG_FAILED_TO_LOAD_LSP_Message.h"
#include "messaging/enumMSG_LSP_ERROR_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"
#include "messaging/enumMSG_TRAY_ANIMATION_Message.h"
#include "support/TraceRecorder.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

const auto* const g_localizer =
    ::testing::AddGlobalTestEnvironment(std::make_unique<EnglishLocalizerEnvironment>().release());

using Lines = std::vector<std::string>;
using TestSupport::WaitFor;

// Holds the first dialog open until the test lets it go, as a user who has not answered yet.
class Gate {
public:
    void Wait() {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_opened.wait(lock, [this] { return m_open; });
    }
    void Open() {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_open = true;
        }
        m_opened.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_opened;
    bool m_open = false;
};

std::unique_ptr<IMessage> FailedToLoad(const stdstr& component) {
    return std::make_unique<enumMSG_FAILED_TO_LOAD_LSP_Message>(
        InboundEnvelopes::FailedToLoad(component));
}

std::string ComponentOf(std::uintptr_t wParam) {
    const auto* msg = reinterpret_cast<const IMessage*>(wParam);
    const auto* failed = dynamic_cast<const enumMSG_FAILED_TO_LOAD_LSP_Message*>(msg);
    return failed ? EventJournal::Narrow(failed->GetComponentName()) : std::string("?");
}

class Pump : public ::testing::Test {
protected:
    void SetUp() override {
        TraceRecorder::Instance().Clear();
        CountedMessage::alive = 0;
    }

    bool JournalHas(const std::string& line) {
        return WaitFor([&] { return journal.Count(line) > 0; });
    }
    static bool TraceHas(std::uint32_t level, const std::u16string& text) {
        return WaitFor([&] { return TraceRecorder::Instance().Count(level, text) > 0; });
    }

    EventJournal journal;
    RecordingWindowPort window{journal};
    ScriptedDialogs dialogs{journal};
    ScriptedLauncher launcher{journal};
    ScriptedReboot reboot{journal};
    LspReinstaller reinstaller{dialogs, launcher, reboot};
    ComponentFailureResponder responder{dialogs, reinstaller};
    // Last, so that its thread has ended before the doubles above go.
    CMsgHandler pump{window, responder};
};

TEST_F(Pump, WithAWindowAQueuedFailureIsSentToItAs1060) {
    window.onSend = [&](int, std::uintptr_t wParam, std::intptr_t) {
        journal.Add("window handles [" + ComponentOf(wParam) + "]");
        return std::intptr_t{0};
    };
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(FailedToLoad(u"QGLsp.so"));
    ASSERT_TRUE(JournalHas("window handles [QGLsp.so]"));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1060 msg260 0", "window handles [QGLsp.so]"}));
}

TEST_F(Pump, AFailureBeforeTheWindowExistsIsShownOnThePumpsThreadWithoutOwner) {
    window.exists = false;
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(FailedToLoad(u"QGLsp.so"));
    // The post goes to a window that is not there, and is made all the same.
    ASSERT_TRUE(JournalHas("main post 1059 0 0"));
    EXPECT_EQ(journal.Lines(),
              (Lines{"box none [" + UserTexts::CannotLoad("QGLsp.so") + "] [Quillgate] 16",
                     "main post 1059 0 0"}));
    const auto threads = dialogs.BoxThreads();
    ASSERT_EQ(threads.size(), 1u);
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

TEST_F(Pump, AnLspErrorBeforeTheWindowExistsShowsString237) {
    window.exists = false;
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(std::make_unique<enumMSG_LSP_ERROR_Message>());
    ASSERT_TRUE(JournalHas("main post 1059 0 0"));
    EXPECT_EQ(journal.Lines(),
              (Lines{std::string("box none [") + UserTexts::LspError + "] [Quillgate] 16",
                     "main post 1059 0 0"}));
}

TEST_F(Pump, AReinstallBeforeTheWindowExistsRunsItThenEndsWithoutRebootOnNo) {
    window.exists = false;
    dialogs.boxAnswers = {InboundDialogs::IDNO};
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(std::make_unique<enumMSG_REINSTALL_LSP_Message>(InboundEnvelopes::Reinstall(
        u"/opt/velloran/lspinstall", u"--repair --quiet", u"/opt/velloran")));
    ASSERT_TRUE(JournalHas("main post 1059 0 0"));
    EXPECT_EQ(
        journal.Lines(),
        (Lines{"prompt", "launch [/opt/velloran/lspinstall] [--repair --quiet] [/opt/velloran]",
               std::string("box none [") + UserTexts::Reinstalled + "] [] 4",
               "main post 1059 0 0"}));
}

TEST_F(Pump, TwoMessagesQueuedWhileADialogIsOpenFollowInTheirOrder) {
    Gate gate;
    window.onSend = [&](int, std::uintptr_t wParam, std::intptr_t) {
        const std::string name = ComponentOf(wParam);
        journal.Add("begin " + name);
        if (name == "first")
            gate.Wait();
        journal.Add("end " + name);
        return std::intptr_t{0};
    };
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(FailedToLoad(u"first"));
    ASSERT_TRUE(JournalHas("begin first"));
    pump.Enqueue(FailedToLoad(u"second"));
    pump.Enqueue(FailedToLoad(u"third"));
    gate.Open();
    ASSERT_TRUE(JournalHas("end third"));
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1060 msg260 0", "begin first", "end first",
                                      "main send 1060 msg260 0", "begin second", "end second",
                                      "main send 1060 msg260 0", "begin third", "end third"}));
}

TEST_F(Pump, HandlersThatPostOvertakeQueuedMessages) {
    Gate gate;
    window.onSend = [&](int, std::uintptr_t, std::intptr_t) {
        journal.Add("dialog open");
        gate.Wait();
        journal.Add("dialog closed");
        return std::intptr_t{0};
    };
    MainWindowPort::Install(&window);
    InboundHandlers::Attach(&pump, nullptr);
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(FailedToLoad(u"first"));
    ASSERT_TRUE(JournalHas("dialog open"));

    // A tray animation arrives while the user still looks at the first box.
    enumMSG_TRAY_ANIMATION_Message animation;
    animation.SetAnimation(1);
    const std::string bytes = InboundEnvelopes::Utf16Bytes(InboundEnvelopes::Of(animation));
    std::uint8_t* reply = nullptr;
    std::int32_t replyLength = 0;
    EXPECT_EQ(InboundHandlers::OnTrayAnimation(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                               static_cast<std::uint32_t>(bytes.size()), &reply,
                                               &replyLength),
              1);
    gate.Open();
    ASSERT_TRUE(JournalHas("dialog closed"));
    InboundHandlers::Attach(nullptr, nullptr);
    MainWindowPort::Install(nullptr);
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1060 msg260 0", "dialog open",
                                      "main post 1054 1 0", "dialog closed"}));
}

TEST_F(Pump, AnIdOutsideTheThreeIsTracedAndFreed) {
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(std::make_unique<CountedMessage>(272));
    ASSERT_TRUE(TraceHas(TRACE_DEBUG, u"Not handled message id 272"));
    EXPECT_TRUE(WaitFor([] { return CountedMessage::alive.load() == 0; }));
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(Pump, AnIdOutsideTheThreeWithoutAWindowIsTracedTheSameWay) {
    window.exists = false;
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(std::make_unique<CountedMessage>(256));
    ASSERT_TRUE(TraceHas(TRACE_DEBUG, u"Not handled message id 256"));
    EXPECT_TRUE(WaitFor([] { return CountedMessage::alive.load() == 0; }));
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(Pump, EachHandledMessageIsFreed) {
    window.onSend = [&](int, std::uintptr_t, std::intptr_t) {
        journal.Add("handled");
        return std::intptr_t{0};
    };
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(std::make_unique<CountedMessage>(263));
    pump.Enqueue(std::make_unique<CountedMessage>(264));
    ASSERT_TRUE(WaitFor([&] { return journal.Count("handled") == 2; }));
    EXPECT_TRUE(WaitFor([] { return CountedMessage::alive.load() == 0; }));
}

TEST_F(Pump, ACountWithAnEmptyQueueIsTracedAsGotNothingAndTheLoopGoesOn) {
    pump.Enqueue(std::make_unique<CountedMessage>(272));
    // Taken out behind the pump's back: the count stays, the queue is empty.
    EXPECT_NE(pump.Dequeue(), nullptr);
    ASSERT_TRUE(pump.StartThread());
    ASSERT_TRUE(TraceHas(TRACE_ERROR, u"Got nothing in CMsgHandler::ManagerProc"));
    window.exists = false;
    pump.Enqueue(std::make_unique<enumMSG_LSP_ERROR_Message>());
    EXPECT_TRUE(JournalHas("main post 1059 0 0"));
    EXPECT_EQ(
        TraceRecorder::Instance().Count(TRACE_ERROR, u"Got nothing in CMsgHandler::ManagerProc"),
        1u);
}

TEST_F(Pump, AnExceptionInADispatchIsTracedAndTheLoopGoesOn) {
    int calls = 0;
    window.onSend = [&](int, std::uintptr_t, std::intptr_t) -> std::intptr_t {
        if (++calls == 1)
            throw std::runtime_error("the window failed");
        journal.Add("second handled");
        return 0;
    };
    ASSERT_TRUE(pump.StartThread());
    pump.Enqueue(std::make_unique<CountedMessage>(260));
    pump.Enqueue(std::make_unique<CountedMessage>(263));
    ASSERT_TRUE(JournalHas("second handled"));
    EXPECT_EQ(TraceRecorder::Instance().At(TRACE_ERROR),
              (std::vector<std::u16string>{u"Exception in CMsgHandler::ManagerProc"}));
    EXPECT_TRUE(WaitFor([] { return CountedMessage::alive.load() == 0; }));
}

TEST_F(Pump, TheExitEventEndsTheThreadAndAStartResumesTheQueue) {
    ASSERT_TRUE(pump.StartThread());
    pump.RequestExit();
    ASSERT_TRUE(TraceHas(TRACE_DEBUG, u"CMsgHandler::ManagerProc get exit event"));
    window.exists = false;
    pump.Enqueue(std::make_unique<enumMSG_LSP_ERROR_Message>());
    // The next start clears the exit event; the message left in the queue is handled.
    ASSERT_TRUE(pump.StartThread());
    EXPECT_TRUE(JournalHas("main post 1059 0 0"));
    EXPECT_EQ(
        TraceRecorder::Instance().Count(TRACE_DEBUG, u"CMsgHandler::ManagerProc get exit event"),
        1u);
}

// A pump whose first wait fails, as a wait on a broken handle would.
class FailingOncePump : public CMsgHandler {
public:
    using CMsgHandler::CMsgHandler;
    ~FailingOncePump() override { StopThread(); }

    std::vector<std::thread::id> Waiters() {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_waiters;
    }

protected:
    std::uint32_t WaitForSignals() override {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_waiters.push_back(std::this_thread::get_id());
            if (m_waiters.size() == 1)
                return WaitFailed;
        }
        return CMsgHandler::WaitForSignals();
    }

private:
    std::mutex m_mutex;
    std::vector<std::thread::id> m_waiters;
};

TEST_F(Pump, AFailedWaitIsTracedAndTheThreadReplacesItself) {
    window.exists = false;
    FailingOncePump failing(window, responder);
    ASSERT_TRUE(failing.StartThread());
    ASSERT_TRUE(
        TraceHas(TRACE_ERROR, u"WaitForMultipleObjects return -1 in CMsgHandler::ManagerProc"));
    failing.Enqueue(std::make_unique<enumMSG_LSP_ERROR_Message>());
    ASSERT_TRUE(JournalHas("main post 1059 0 0"));
    const auto waiters = failing.Waiters();
    ASSERT_GE(waiters.size(), 2u);
    EXPECT_NE(waiters[0], waiters[1]);
}

TEST_F(Pump, TheDestructorFreesWhatIsStillQueued) {
    {
        CMsgHandler idle(window, responder);
        idle.Enqueue(std::make_unique<CountedMessage>(260));
        idle.Enqueue(std::make_unique<CountedMessage>(263));
        EXPECT_EQ(CountedMessage::alive.load(), 2);
    }
    EXPECT_EQ(CountedMessage::alive.load(), 0);
}

TEST_F(Pump, DequeueTakesTheOldestAndAnswersNullWhenEmpty) {
    pump.Enqueue(std::make_unique<CountedMessage>(260));
    pump.Enqueue(std::make_unique<CountedMessage>(263));
    EXPECT_EQ(pump.Dequeue()->GetId(), 260u);
    EXPECT_EQ(pump.Dequeue()->GetId(), 263u);
    EXPECT_EQ(pump.Dequeue(), nullptr);
}

TEST_F(Pump, ABurstOfTenThousandInboundCallsLosesNoneAndKeepsTheirOrder) {
    constexpr int Count = 10000;
    std::mutex seenMutex;
    std::vector<std::string> seen;
    seen.reserve(Count);
    window.onSend = [&](int, std::uintptr_t wParam, std::intptr_t) {
        std::lock_guard<std::mutex> lock(seenMutex);
        seen.push_back(ComponentOf(wParam));
        return std::intptr_t{0};
    };
    InboundHandlers::Attach(&pump, nullptr);
    ASSERT_TRUE(pump.StartThread());
    // The plug-in's thread, calling as fast as it can.
    std::thread plugin([] {
        for (int i = 0; i < Count; ++i) {
            const std::string bytes = InboundEnvelopes::Utf16Bytes(InboundEnvelopes::Of(
                InboundEnvelopes::FailedToLoad(stdstr::toTString("lsp" + std::to_string(i)))));
            std::uint8_t* reply = nullptr;
            std::int32_t replyLength = 0;
            InboundHandlers::OnFailedToLoadLsp(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                               static_cast<std::uint32_t>(bytes.size()), &reply,
                                               &replyLength);
        }
    });
    plugin.join();
    const bool all = WaitFor(
        [&] {
            std::lock_guard<std::mutex> lock(seenMutex);
            return seen.size() >= static_cast<std::size_t>(Count);
        },
        std::chrono::seconds(120));
    InboundHandlers::Attach(nullptr, nullptr);
    ASSERT_TRUE(all);
    std::lock_guard<std::mutex> lock(seenMutex);
    ASSERT_EQ(seen.size(), static_cast<std::size_t>(Count));
    for (int i = 0; i < Count; ++i)
        ASSERT_EQ(seen[static_cast<std::size_t>(i)], "lsp" + std::to_string(i)) << i;
    EXPECT_TRUE(TraceRecorder::Instance().At(TRACE_ERROR).empty());
}

} // namespace
