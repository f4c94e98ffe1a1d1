#pragma once
// The service's own settings, read once at start from qgsasvc.conf ("Key=Value" lines, '#'
// starts a comment). A missing file means the defaults. Known keys:
//   AllowedGroup    group name or number whose members may use the service; empty: anybody
//   MaxConnections  connections served at once (1..1024, default 64); more are told
//                   "overloaded"
//   SlowReplyMs     how late a reply comes under the "slow" fault (default 5000)

#include <cstdint>
#include <string>

struct ServiceSettings {
    std::string allowedGroup;
    std::uint32_t maxConnections = 64;
    std::uint32_t slowReplyMs = 5000;

    // False with `error` saying which line is wrong; an unreadable file too.
    static bool load(const std::string& path, ServiceSettings& out, std::string& error);
};
