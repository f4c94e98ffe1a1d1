#include "ServiceSandbox.h"

#include "protocol/RpcPayload.h"
#include "service/PidFile.h"
#include "service/ServicePaths.h"

#include <csignal>
#include <sstream>
#include <unistd.h>

void ServiceSandbox::TearDown() {
    const TestSupport::ProgramResult stopped = service({"-Stop"});
    EXPECT_EQ(stopped.exitCode, 0) << stopped.err;
    if (serviceLocked()) {
        ::kill(servicePid(), SIGKILL);
        TestSupport::WaitFor([this] { return !serviceLocked(); });
    }
}

TestSupport::ProgramResult ServiceSandbox::service(const std::vector<std::string>& arguments) {
    return TestSupport::RunProgram(QGSASVC_PATH, arguments);
}

void ServiceSandbox::start() {
    const TestSupport::ProgramResult started = service({"-Start"});
    ASSERT_EQ(started.exitCode, 0) << started.err;
    ASSERT_EQ(started.err, "");
}

pid_t ServiceSandbox::servicePid() const {
    return PidFile::observe(ServicePaths::PidFile()).pid;
}

bool ServiceSandbox::serviceLocked() const {
    return PidFile::observe(ServicePaths::PidFile()).locked;
}

std::string ServiceSandbox::configText() const {
    return TestSupport::SandboxRoot::readFile(
        sandbox.file("var/lib/velloran/quillgate/QGConfig.ini"));
}

std::vector<std::string> ServiceSandbox::logLines() const {
    std::istringstream text(TestSupport::SandboxRoot::readFile(
        sandbox.file("var/log/velloran/qgsasvc-messages.jsonl")));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

std::string ServiceSandbox::diagnostics() const {
    return TestSupport::SandboxRoot::readFile(sandbox.file("var/log/velloran/qgsasvc.log"));
}

std::string ServiceSandbox::inLine(int id, const std::string& name, const std::string& fields,
                                   const std::string& reply) {
    return "{\"dir\":\"in\",\"pid\":" + std::to_string(::getpid()) +
           ",\"uid\":" + std::to_string(::getuid()) + ",\"id\":" + std::to_string(id) +
           ",\"name\":\"" + name + "\",\"fields\":" + fields + ",\"reply\":" + reply + "}";
}

RpcAnswer ServiceSandbox::send(RpcClient& client, const IMessage& message,
                               std::chrono::milliseconds timeout) {
    return client.sendRequest(RpcPayload::RequestOf(message), timeout);
}
