#pragma once
// Where the service listens: the server name "SharedRPCServer" as a Unix socket below the
// sandbox root.

#include <string>

namespace RpcSocketPath {

// The name by which the program addresses the service.
inline constexpr const char16_t* ServerName = u"SharedRPCServer";

// $ROOT/run/velloran/SharedRPCServer
std::string Path();
// $ROOT/run/velloran
std::string Folder();

} // namespace RpcSocketPath
