#include "protocol/RpcSocketPath.h"

#include "foundation/SystemPaths.h"

namespace RpcSocketPath {

std::string Folder() {
    return SystemPaths::RunFolder() + "/velloran";
}

std::string Path() {
    return Folder() + "/SharedRPCServer";
}

} // namespace RpcSocketPath
