#pragma once
// The reply buffers that SendRequest hands to the host, which gives each back through
// FreeBuffer and never frees one itself. Each holds the reply's bytes and a 0 byte behind
// them (the reply is text that a 0 ends); the object frees what the host never gave back
// when it goes.

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>

class ReplyBuffers {
public:
    // A new buffer with `payload` in it; valid until Free.
    std::uint8_t* Keep(std::string_view payload);
    // Frees a buffer that Keep gave out; false for any other pointer (which is left alone).
    bool Free(const std::uint8_t* buffer);
    std::size_t Outstanding() const;

private:
    mutable std::mutex m_mutex;
    std::map<const std::uint8_t*, std::unique_ptr<std::uint8_t[]>> m_buffers;
};
