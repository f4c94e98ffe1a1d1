// What qgsasvc does with the program's requests: answers, the settings file, the echo of a
// Config change to every program, and the message log.
#include "ServiceSandbox.h"

#include "messaging/CMessageEnvelope.h"
#include "messaging/enumMSG_CONFIG_CHANGE_Message.h"
#include "messaging/enumMSG_FILTER_CHANGE_Message.h"
#include "messaging/enumMSG_GUI_START_Message.h"
#include "messaging/enumMSG_PING_Message.h"
#include "protocol/RpcPayload.h"
#include "protocol/RpcStatus.h"
#include "protocol/enumMSG_STATISTICS_Message.h"
#include "service/FieldMessage.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

enumMSG_CONFIG_CHANGE_Message Settings() {
    enumMSG_CONFIG_CHANGE_Message message;
    message.SetProcessId(3412);
    message.SetFirstRun(0);
    message.SetFilterOn(1);
    message.SetAutoUpgrade(0);
    message.SetShowCloseWindow(1);
    message.SetUpgradePeriod(7);
    message.SetHistoryDays(-3);
    message.SetConfigPath(u"/data/quill gate & <co>");
    message.SetLanguage(u"1033");
    return message;
}

} // namespace

using ServiceRequests = ServiceSandbox;

TEST_F(ServiceRequests, APingIsAnsweredWithAPingAndRecorded) {
    start();
    RpcClient client;
    const RpcAnswer answer = send(client, enumMSG_PING_Message());
    ASSERT_EQ(answer.status, RpcStatus::Delivered);
    enumMSG_PING_Message reply;
    CMessageEnvelope envelope;
    EXPECT_TRUE(envelope.ParseChecked(reply, answer.payload.data(),
                                      static_cast<std::uint32_t>(answer.payload.size())));
    const auto lines = logLines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1], inLine(272, "PING", "[]", "1"));
}

TEST_F(ServiceRequests, AConfigChangeWritesTheSystemKeysOfQGConfigIni) {
    start();
    RpcClient client;
    const RpcAnswer answer = send(client, Settings());
    ASSERT_EQ(answer.status, RpcStatus::Delivered);
    EXPECT_EQ(configText(), "[SYSTEM]\n"
                            "FirstRun=0\n"
                            "FilterOn=1\n"
                            "AutoUpgrade=0\n"
                            "ShowCloseWindow=1\n"
                            "UpgradePeriod=7\n"
                            "HistoryDays=-3\n"
                            "ConfigPath=/data/quill gate & <co>\n"
                            "Language=1033\n");
    // Nothing of the temporary file is left beside it.
    EXPECT_EQ(std::distance(
                  std::filesystem::directory_iterator(sandbox.file("var/lib/velloran/quillgate")),
                  std::filesystem::directory_iterator()),
              1);
    enumMSG_CONFIG_CHANGE_Message reply;
    CMessageEnvelope envelope;
    ASSERT_TRUE(envelope.ParseChecked(reply, answer.payload.data(),
                                      static_cast<std::uint32_t>(answer.payload.size())));
    EXPECT_EQ(reply.GetProcessId(), servicePid());
    EXPECT_EQ(reply.GetHistoryDays(), -3);
    EXPECT_EQ(reply.GetConfigPath(), u"/data/quill gate & <co>");
}

TEST_F(ServiceRequests, AConfigChangeIsEchoedAsAnInboundCallToEveryProgram) {
    start();
    RpcClient sender;
    RpcClient other;
    // A reply proves that the service has taken each connection in.
    ASSERT_EQ(send(sender, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    ASSERT_EQ(send(other, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    ASSERT_EQ(send(sender, Settings()).status, RpcStatus::Delivered);

    for (RpcClient* client : {&sender, &other}) {
        const auto call = client->waitForInbound(std::chrono::seconds(10));
        ASSERT_TRUE(call.has_value());
        EXPECT_EQ(call->kind, RpcFrameKind::InboundCall);
        EXPECT_EQ(call->code, 258u);
        // The call is UTF-16: read as UTF-8 it would have no tag at all.
        EXPECT_EQ(call->payload.size() % 2, 0u);
        EXPECT_EQ(RpcPayload::TextOfRequest(call->payload).find(u"<VLID>"), stdstr::npos);
        enumMSG_CONFIG_CHANGE_Message echo;
        CMessageEnvelope envelope;
        envelope.Parse(echo, RpcPayload::TextOfInbound(call->payload));
        EXPECT_EQ(echo.GetProcessId(), servicePid());
        EXPECT_EQ(echo.GetFirstRun(), 0);
        EXPECT_EQ(echo.GetFilterOn(), 1);
        EXPECT_EQ(echo.GetAutoUpgrade(), 0);
        EXPECT_EQ(echo.GetShowCloseWindow(), 1);
        EXPECT_EQ(echo.GetUpgradePeriod(), 7);
        EXPECT_EQ(echo.GetHistoryDays(), -3);
        EXPECT_EQ(echo.GetConfigPath(), u"/data/quill gate & <co>");
        EXPECT_EQ(echo.GetLanguage(), u"1033");
    }
    const auto lines = logLines();
    ASSERT_EQ(lines.size(), 5u);
    const std::string fields = ",0,1,0,1,7,-3,\"/data/quill gate & <co>\",\"1033\"]";
    // Received first, then the echo: both before the reply that the sender has in hand.
    EXPECT_EQ(lines[3], inLine(258, "Config change", "[3412" + fields, "1"));
    EXPECT_EQ(lines[4], "{\"dir\":\"out\",\"id\":258,\"name\":\"Config change\",\"fields\":[" +
                            std::to_string(servicePid()) + fields + ",\"to\":2}");
}

TEST_F(ServiceRequests, AConfigChangeKeepsTheRestOfTheFile) {
    sandbox.writeFile(
        "var/lib/velloran/quillgate/QGConfig.ini",
        "; kept\n[Engine]\nFirstRun=9\n[system]\nfilteron=0\nExtra=yes\n\n[Tail]\nA=1\n");
    start();
    RpcClient client;
    ASSERT_EQ(send(client, Settings()).status, RpcStatus::Delivered);
    EXPECT_EQ(configText(), "; kept\n[Engine]\nFirstRun=9\n[system]\nFilterOn=1\nExtra=yes\n"
                            "FirstRun=0\nAutoUpgrade=0\nShowCloseWindow=1\nUpgradePeriod=7\n"
                            "HistoryDays=-3\nConfigPath=/data/quill gate & <co>\nLanguage=1033\n"
                            "\n[Tail]\nA=1\n");
}

TEST_F(ServiceRequests, GuiStartAndFilterStatusAreKeptAnsweredAndRecorded) {
    start();
    RpcClient client;
    enumMSG_GUI_START_Message start;
    start.SetProcessId(4242);
    const RpcAnswer started = send(client, start);
    ASSERT_EQ(started.status, RpcStatus::Delivered);
    enumMSG_GUI_START_Message reply;
    CMessageEnvelope envelope;
    ASSERT_TRUE(envelope.ParseChecked(reply, started.payload.data(),
                                      static_cast<std::uint32_t>(started.payload.size())));
    EXPECT_EQ(reply.GetProcessId(), servicePid());

    enumMSG_FILTER_CHANGE_Message filter;
    filter.SetFilterState(0);
    EXPECT_EQ(send(client, filter).status, RpcStatus::Delivered);

    const auto lines = logLines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1], inLine(262, "GUI Start", "[4242]", "1"));
    EXPECT_EQ(lines[2], inLine(257, "Filter status", "[0]", "1"));
    const TestSupport::ProgramResult status = service({"--status"});
    EXPECT_NE(status.out.find(" filter=0 gui=4242 "), std::string::npos) << status.out;
}

TEST_F(ServiceRequests, AnUnknownIdIsAnsweredWithStatusZeroAndRecordedWithTextFields) {
    start();
    RpcClient client;
    const RpcAnswer answer =
        send(client, FieldMessage(300, u"Mystery", std::vector<FieldValue>{7, stdstr(u"x\"y")}));
    EXPECT_EQ(answer.status, RpcStatus::NotUnderstood);
    EXPECT_EQ(answer.payload, "");
    ASSERT_EQ(logLines().size(), 2u);
    EXPECT_EQ(logLines()[1], inLine(300, "Mystery", "[\"7\",\"x\\\"y\"]", "0"));
}

TEST_F(ServiceRequests, ATextWithoutAValidIdIsRecordedWithIdZero) {
    start();
    RpcClient client;
    EXPECT_EQ(client.sendRequest("no envelope at all", std::chrono::seconds(10)).status,
              RpcStatus::NotUnderstood);
    ASSERT_EQ(logLines().size(), 2u);
    EXPECT_EQ(logLines()[1], inLine(0, "", "[]", "0"));
}

TEST_F(ServiceRequests, TheStatisticsRequestGivesTheCounts) {
    start();
    ASSERT_EQ(service({"--counts", "spam=12", "examined=340"}).out, "spam=12 examined=340\n");
    RpcClient client;
    const RpcAnswer answer = send(client, enumMSG_STATISTICS_Message());
    ASSERT_EQ(answer.status, RpcStatus::Delivered);
    enumMSG_STATISTICS_Message counts;
    CMessageEnvelope envelope;
    ASSERT_TRUE(envelope.ParseChecked(counts, answer.payload.data(),
                                      static_cast<std::uint32_t>(answer.payload.size())));
    EXPECT_EQ(counts.GetSpamCount(), 12);
    EXPECT_EQ(counts.GetExaminedCount(), 340);
}

TEST_F(ServiceRequests, APeerThatSpeaksAnotherProtocolIsCutOffAndOthersAreStillServed) {
    start();
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(fd, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = sandbox.file("run/velloran/SharedRPCServer");
    std::copy(path.begin(), path.end(), address.sun_path);
    ASSERT_EQ(::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    const std::string garbage = "GET / HTTP/1.1\r\n\r\n";
    ASSERT_EQ(::write(fd, garbage.data(), garbage.size()), static_cast<ssize_t>(garbage.size()));
    pollfd waiting{fd, POLLIN, 0};
    ASSERT_EQ(::poll(&waiting, 1, 10000), 1);
    char byte = 0;
    EXPECT_EQ(::read(fd, &byte, 1), 0); // closed without an answer
    ::close(fd);

    RpcClient client;
    EXPECT_EQ(send(client, enumMSG_PING_Message()).status, RpcStatus::Delivered);
    EXPECT_NE(diagnostics().find(" closed: not a Quillgate frame (bad magic)\n"), std::string::npos)
        << diagnostics();
}
