#include "messaging/CheckRpcStatus.h"

#include "foundation/CorvaneBaseException.h"
#include "foundation/stdstr.h"
#include "mainwindow/PrivateMessages.h"
#include "mainwindow/RpcContract.h"
#include "messaging/MainWindowPort.h"

std::atomic<std::int32_t> ServiceConnected{1};

namespace {

[[noreturn]] void Throw(const char* file, std::int32_t line, const char16_t* words) {
    throw Corvane::BaseException(stdstr::toTString(file != nullptr ? file : ""), line, words, -1);
}

} // namespace

void CheckRpcStatus(std::uint32_t status, const char* file, std::int32_t line) {
    switch (status) {
    case RpcStatus::SendException:
        Throw(file, line, u"Send message exception");
    case RpcStatus::TimeOut:
        Throw(file, line, u"RPC Time out");
    case RpcStatus::ServerOverload:
        Throw(file, line, u"RPC Server Overload");
    case RpcStatus::AccessDenied:
        Throw(file, line, u"Access Denied");
    case RpcStatus::ServerDown:
        if (ServiceConnected.load() != 0) {
            ServiceConnected.store(0);
            MainWindowPort::Get().send(WM_QG_RPC_STATUS, 1, 0);
        }
        Throw(file, line, u"RPC Server Down");
    default:
        // Whatever the server answered, it answered: the service is there.
        if (ServiceConnected.load() == 0) {
            ServiceConnected.store(1);
            WindowPort& window = MainWindowPort::Get();
            window.send(WM_QG_RPC_STATUS, 0, 0);
            window.send(WM_QG_REFRESH_STATUS, 0, 0);
        }
        break;
    }
}
