#pragma once
// The service's mail counts as one request for them ended: the request's status, whether
// the counts were read from a reply, and the counts.

#include "mainwindow/RpcContract.h"

#include <cstdint>

struct StatisticsAnswer {
    std::uint32_t status = RpcStatus::ServerDown;
    bool answered = false;
    std::int32_t spam = 0;
    std::int32_t examined = 0;

    // The service is known to be away (no socket, nobody listening).
    bool ServiceDown() const { return status == RpcStatus::ServerDown; }
    // The service answered, whatever it answered.
    bool ServiceUp() const {
        return status < RpcStatus::SendException || status > RpcStatus::ServerDown;
    }
};
