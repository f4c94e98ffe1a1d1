#include "service/ControlCommand.h"

#include "protocol/RpcClient.h"
#include "protocol/RpcStatus.h"
#include "service/ControlArguments.h"
#include "service/ControlHandler.h"
#include "service/FilterSimulation.h"

#include <chrono>
#include <cstdio>

int ControlCommand::run(ControlOperation operation, const std::vector<std::string>& arguments) {
    // A simulation answers when it has run: up to 1000 mails, one step each.
    const std::chrono::milliseconds timeout =
        operation == ControlOperation::SimulateFiltering
            ? std::chrono::seconds(15) + FilterSimulation::Step * 1002
            : std::chrono::milliseconds(std::chrono::seconds(15));
    RpcClient client;
    const RpcAnswer answer = client.sendControl(static_cast<std::uint32_t>(operation),
                                                ControlArguments::encode(arguments), timeout);
    if (answer.status != RpcStatus::Delivered) {
        std::fprintf(stderr, "qgsasvc: %s: %s (status %u)\n",
                     std::string(NameOf(operation)).c_str(), describeStatus(answer.status).c_str(),
                     answer.status);
        return 1;
    }
    if (answer.result != ControlHandler::Done) {
        std::fprintf(stderr, "qgsasvc: %s: %s\n", std::string(NameOf(operation)).c_str(),
                     answer.payload.c_str());
        return 1;
    }
    std::printf("%s\n", answer.payload.c_str());
    return 0;
}

std::string ControlCommand::describeStatus(std::uint32_t status) {
    switch (status) {
    case RpcStatus::SendFailed:
        return "Send message exception";
    case RpcStatus::TimedOut:
        return "RPC Time out";
    case RpcStatus::Overloaded:
        return "RPC Server Overload";
    case RpcStatus::AccessDenied:
        return "Access Denied";
    case RpcStatus::ServerDown:
        return "RPC Server Down";
    default:
        return "status " + std::to_string(status);
    }
}
