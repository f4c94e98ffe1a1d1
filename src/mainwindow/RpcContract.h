#pragma once
// The plug-in's RPC object as both sides of the library boundary see it, and the plain
// types that travel through it. Standard types only: the message library, which has no
// window system, sends and receives through this interface.
//
// The order of the virtual operations is the contract between two separately built
// modules (the Itanium C++ ABI lays the table out in declaration order): never reorder,
// insert or remove one. The reserved slots stand where the host has no use for an
// operation; a plug-in keeps them in their place and the host never calls them.

#include <cstdint>

// Visibility of the plug-in's factories: the library is loaded with dlopen and its five
// factories are looked up by name, so they must stay exported even when a plug-in builds
// with hidden symbols.
#if defined(__GNUC__)
#define QG_PLUGIN_EXPORT __attribute__((visibility("default")))
#else
#define QG_PLUGIN_EXPORT
#endif

// Status of SendRequest. 1 means delivered; any value outside 65531..65535 means that the
// server answered.
namespace RpcStatus {
inline constexpr std::uint32_t Success = 1;
inline constexpr std::uint32_t SendException = 65531;  // "Send message exception"
inline constexpr std::uint32_t TimeOut = 65532;        // "RPC Time out"
inline constexpr std::uint32_t ServerOverload = 65533; // "RPC Server Overload"
inline constexpr std::uint32_t AccessDenied = 65534;   // "Access Denied"
inline constexpr std::uint32_t ServerDown = 65535;     // "RPC Server Down"
} // namespace RpcStatus

// The one server that this program talks to.
inline constexpr const char16_t* RpcServerName = u"SharedRPCServer";

// A handler that the host registers for one message id. `data` is the message envelope
// as UTF-16 text of `byteLength / 2` code units (no terminator counted). The host's
// handlers never reply: they write 0 to both out parameters (or leave them, for the two
// ids that don't look at the data) and return 1. A handler may be called on any thread of
// the plug-in.
using RPCHandler = std::int32_t (*)(const std::uint8_t* data, std::uint32_t byteLength,
                                    std::uint8_t** reply, std::int32_t* replyLength);

// The plug-in's transport to the filter service. The host calls SendRequest and FreeBuffer
// on its GUI thread, RegisterHandler while loading the plug-in and UnregisterHandler in its
// exit sequence.
class IRPCExt {
public:
    // Three leading operations that the host never calls.
    virtual std::int32_t Reserved1() { return 0; }
    virtual std::int32_t Reserved2() { return 0; }
    virtual std::int32_t Reserved3() { return 0; }

    // Drops the handler bound to `messageId`. Result ignored.
    virtual std::int32_t UnregisterHandler(std::uint32_t messageId) = 0;
    // Takes back a reply buffer that SendRequest gave out; the host never frees one itself.
    // Both arguments are in and out. Result ignored.
    virtual std::int32_t FreeBuffer(std::uint8_t** reply, std::int32_t* replyLength) = 0;
    // Sends `length` bytes of `data` (a UTF-8 message envelope, no terminator counted) to
    // `serverName` and blocks until the status is known (see RpcStatus). `*reply` may come
    // back null; a reply with a length above 0 is given back through FreeBuffer.
    virtual std::uint32_t SendRequest(const char16_t* serverName, const std::uint8_t* data,
                                      std::uint32_t length, std::uint8_t** reply,
                                      std::int32_t* replyLength) = 0;
    // Binds `handler` to `messageId`. Result ignored.
    virtual std::int32_t RegisterHandler(std::uint32_t messageId, RPCHandler handler) = 0;

protected:
    // The plug-in owns the object: the host never deletes one, hence no public destructor.
    IRPCExt() = default;
    IRPCExt(const IRPCExt&) = default;
    IRPCExt& operator=(const IRPCExt&) = default;
    ~IRPCExt() = default;
};

// The factory of the RPC object, exported by the plug-in under this exact name.
extern "C" {
QG_PLUGIN_EXPORT IRPCExt* CreateRPCInstance();
}
using CreateRPCInstanceFunc = IRPCExt* (*)();
