#pragma once
// The statuses that a request ends with, as the program's send path knows them. The first
// is the service's "done"; the five at the top of the 16-bit range are the transport's
// failures. Any other value is an answer of the service that is not "done" (the service
// uses 0 for a message that it does not understand).

#include <cstdint>

namespace RpcStatus {

inline constexpr std::uint32_t Delivered = 1;
inline constexpr std::uint32_t NotUnderstood = 0;
// The connection broke while the request was written or before its reply came.
inline constexpr std::uint32_t SendFailed = 65531;
// No reply within the caller's time-out.
inline constexpr std::uint32_t TimedOut = 65532;
// The service has no room for another program.
inline constexpr std::uint32_t Overloaded = 65533;
// The service refused the caller (its credentials, or the socket's permissions).
inline constexpr std::uint32_t AccessDenied = 65534;
// No socket, or nobody listening on it.
inline constexpr std::uint32_t ServerDown = 65535;

} // namespace RpcStatus
