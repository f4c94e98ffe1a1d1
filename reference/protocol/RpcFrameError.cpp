#include "protocol/RpcFrameError.h"

const char* DescribeRpcFrameError(RpcFrameError error) {
    switch (error) {
    case RpcFrameError::None:
        return "no error";
    case RpcFrameError::BadMagic:
        return "not a Quillgate frame (bad magic)";
    case RpcFrameError::BadVersion:
        return "unknown frame version";
    case RpcFrameError::BadKind:
        return "unknown frame kind";
    case RpcFrameError::ZeroCorrelation:
        return "correlation id 0";
    case RpcFrameError::BadCode:
        return "code not allowed for the frame kind";
    case RpcFrameError::Oversized:
        return "payload larger than the limit";
    case RpcFrameError::OddInboundPayload:
        return "inbound call with an odd payload length";
    }
    return "unknown error";
}
