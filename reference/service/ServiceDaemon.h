#pragma once
// The service's running part: one thread, one poll() loop over the listening socket, a
// signal descriptor for SIGTERM and SIGINT, and every connection, with the timers of
// TimerQueue as the loop's time-out. It decides for each connection whether it is served
// (credentials, connection limit), hands requests to RequestHandler and control operations
// to ControlHandler, applies the fault it has been told to show, records everything in the
// message log, and sends the calls of the service to the connected programs.

#include "service/AccessPolicy.h"
#include "service/ClientConnection.h"
#include "service/ConfigStore.h"
#include "service/ControlHandler.h"
#include "service/MessageLog.h"
#include "service/ProgramChannel.h"
#include "service/RequestHandler.h"
#include "service/ServiceSettings.h"
#include "service/ServiceState.h"
#include "service/TimerQueue.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

class ServiceDaemon : public ProgramChannel {
public:
    ServiceDaemon(ServiceSettings settings, AccessPolicy policy);
    ~ServiceDaemon();
    ServiceDaemon(const ServiceDaemon&) = delete;
    ServiceDaemon& operator=(const ServiceDaemon&) = delete;

    // Loads QGConfig.ini, opens the message log, takes over SIGTERM and SIGINT and starts
    // listening (a socket left behind by a dead service is replaced). False with `error`.
    bool prepare(std::string& error);
    // Serves until SIGTERM or SIGINT; `stopping` is told when the signal has come. Returns
    // the process's exit code.
    int run(const std::function<void()>& stopping);

    std::size_t broadcast(const FieldMessage& message) override;
    std::size_t programCount() const override;
    // Connections served, control clients included: what the connection limit counts.
    std::size_t servedCount() const;

private:
    void acceptAll();
    void admit(int fd);
    void serve(ClientConnection& connection, short events);
    void onFrame(ClientConnection& connection, RpcFrame&& frame);
    void onRequest(ClientConnection& connection, const RpcFrame& frame);
    void onControl(ClientConnection& connection, const RpcFrame& frame);
    // Answers a peer that is not served: its request is recorded, never carried out, and
    // the connection stays open.
    void turnAway(ClientConnection& connection, const RpcFrame& frame, std::uint32_t status);
    void sendTo(std::uint64_t connectionId, const RpcFrame& frame);
    ClientConnection* find(std::uint64_t connectionId);
    void removeFinished();
    void shutDown();

    ServiceSettings m_settings;
    AccessPolicy m_policy;
    ConfigStore m_config;
    MessageLog m_log;
    ServiceState m_state;
    TimerQueue m_timers;
    RequestHandler m_requests;
    ControlHandler m_control;
    std::string m_socketPath;
    int m_listenFd = -1;
    int m_signalFd = -1;
    std::map<std::uint64_t, std::unique_ptr<ClientConnection>> m_connections;
    std::uint64_t m_lastConnectionId = 0;
    std::uint32_t m_lastCallSequence = 0;
};
