// CheckRpcStatus: the words of each error status, and the two states of ServiceConnected with
// the window messages of each change.
#include "messaging/CheckRpcStatus.h"

#include "EventJournal.h"
#include "RecordingWindowPort.h"
#include "foundation/CorvaneBaseException.h"
#include "messaging/MainWindowPort.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

// First in the program, so that no other test has touched the flag yet (ctest also runs each
// test in a process of its own).
TEST(ServiceConnected, StartsAsConnected) {
    EXPECT_EQ(ServiceConnected.load(), 1);
}

class CheckRpcStatusTest : public ::testing::Test {
protected:
    void SetUp() override {
        ServiceConnected = 1;
        MainWindowPort::Install(&window);
    }
    void TearDown() override {
        MainWindowPort::Install(nullptr);
        ServiceConnected = 1;
    }

    // The exception's words, or nothing when the check passed.
    static std::optional<std::u16string> Check(std::uint32_t status) {
        try {
            CheckRpcStatus(status, "MainDlg", 1928);
        } catch (const Corvane::BaseException& e) {
            EXPECT_EQ(e.GetCode(), -1);
            return e.GetMessage();
        }
        return std::nullopt;
    }

    EventJournal journal;
    RecordingWindowPort window{journal};
};

TEST_F(CheckRpcStatusTest, EachErrorStatusThrowsItsWords) {
    EXPECT_EQ(Check(65531), u"Send message exception");
    EXPECT_EQ(Check(65532), u"RPC Time out");
    EXPECT_EQ(Check(65533), u"RPC Server Overload");
    EXPECT_EQ(Check(65534), u"Access Denied");
    EXPECT_EQ(Check(65535), u"RPC Server Down");
}

TEST_F(CheckRpcStatusTest, StatusesAroundTheErrorRangePass) {
    for (const std::uint32_t status : {0u, 1u, 2u, 65530u, 65536u, 0xFFFFFFFFu})
        EXPECT_EQ(Check(status), std::nullopt) << status;
}

TEST_F(CheckRpcStatusTest, AnswerWhileConnectedSendsNothing) {
    EXPECT_EQ(Check(1), std::nullopt);
    EXPECT_EQ(Check(0), std::nullopt);
    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(CheckRpcStatusTest, ServerDownWhileConnectedSendsOne1062WithOneBeforeThrowing) {
    std::vector<std::int32_t> flagDuringSend;
    window.onSend = [&](int, std::uintptr_t, std::intptr_t) {
        flagDuringSend.push_back(ServiceConnected.load());
        return std::intptr_t{0};
    };
    EXPECT_EQ(Check(65535), u"RPC Server Down");
    EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 1 0"}));
    // The flag was down already when the window heard of it.
    EXPECT_EQ(flagDuringSend, (std::vector<std::int32_t>{0}));
    EXPECT_EQ(ServiceConnected.load(), 0);
}

TEST_F(CheckRpcStatusTest, ServerDownWhileDisconnectedThrowsAndSendsNothing) {
    ServiceConnected = 0;
    EXPECT_EQ(Check(65535), u"RPC Server Down");
    EXPECT_EQ(Check(65535), u"RPC Server Down");
    EXPECT_TRUE(journal.Lines().empty());
    EXPECT_EQ(ServiceConnected.load(), 0);
}

TEST_F(CheckRpcStatusTest, OtherErrorStatusesLeaveTheFlagAsItIs) {
    for (const std::uint32_t status : {65531u, 65532u, 65533u, 65534u}) {
        ServiceConnected = 1;
        Check(status);
        EXPECT_EQ(ServiceConnected.load(), 1) << status;
        ServiceConnected = 0;
        Check(status);
        EXPECT_EQ(ServiceConnected.load(), 0) << status;
    }
    EXPECT_TRUE(journal.Lines().empty());
}

TEST_F(CheckRpcStatusTest, AnyOtherStatusWhileDisconnectedReportsTheServiceBack) {
    for (const std::uint32_t status : {0u, 1u, 2u, 65530u, 65536u, 0xFFFFFFFFu}) {
        journal.Clear();
        ServiceConnected = 0;
        EXPECT_EQ(Check(status), std::nullopt) << status;
        EXPECT_EQ(ServiceConnected.load(), 1) << status;
        EXPECT_EQ(journal.Lines(), (Lines{"main send 1062 0 0", "main send 1058 0 0"})) << status;
    }
}

TEST_F(CheckRpcStatusTest, TheFlagIsSetBeforeTheWindowHearsItIsBack) {
    ServiceConnected = 0;
    std::vector<std::int32_t> flagDuringSend;
    window.onSend = [&](int, std::uintptr_t, std::intptr_t) {
        flagDuringSend.push_back(ServiceConnected.load());
        return std::intptr_t{0};
    };
    Check(1);
    EXPECT_EQ(flagDuringSend, (std::vector<std::int32_t>{1, 1}));
}

TEST_F(CheckRpcStatusTest, WithoutAMainWindowTheStateStillChanges) {
    MainWindowPort::Install(nullptr);
    Check(65535);
    EXPECT_EQ(ServiceConnected.load(), 0);
    Check(1);
    EXPECT_EQ(ServiceConnected.load(), 1);
    EXPECT_TRUE(journal.Lines().empty());
}

} // namespace
