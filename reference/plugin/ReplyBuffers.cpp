#include "ReplyBuffers.h"

#include <cstring>

std::uint8_t* ReplyBuffers::Keep(std::string_view payload) {
    auto buffer = std::make_unique<std::uint8_t[]>(payload.size() + 1);
    if (!payload.empty())
        std::memcpy(buffer.get(), payload.data(), payload.size());
    buffer[payload.size()] = 0;
    std::uint8_t* given = buffer.get();
    const std::lock_guard lock(m_mutex);
    m_buffers.emplace(given, std::move(buffer));
    return given;
}

bool ReplyBuffers::Free(const std::uint8_t* buffer) {
    const std::lock_guard lock(m_mutex);
    return m_buffers.erase(buffer) != 0;
}

std::size_t ReplyBuffers::Outstanding() const {
    const std::lock_guard lock(m_mutex);
    return m_buffers.size();
}
