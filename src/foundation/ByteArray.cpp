#include "foundation/ByteArray.h"

#include "foundation/stdstr.h"

#include <cstring>
#include <string_view>

ByteArray::ByteArray(std::uint32_t size, std::uint8_t fill) {
    if (size == 0)
        return;
    m_data = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    std::memset(m_data.get(), fill, size);
    m_size = size;
    m_capacity = size;
}

ByteArray::ByteArray(const ByteArray& other) {
    set(other.m_data.get(), other.m_size);
}

ByteArray::ByteArray(const stdstr& text) {
    const std::string utf8 = stdstr::fromTString(text);
    set(utf8.data(), static_cast<std::uint32_t>(utf8.size()));
}

ByteArray& ByteArray::operator=(const ByteArray& other) {
    if (this != &other)
        set(other.m_data.get(), other.m_size);
    return *this;
}

ByteArray::~ByteArray() = default;

void ByteArray::set(const void* data, std::uint32_t size) {
    // The copy is made before the old block goes, so `data` may point into this array.
    std::unique_ptr<std::uint8_t[]> copy;
    if (data != nullptr && size != 0) {
        copy = std::make_unique_for_overwrite<std::uint8_t[]>(size);
        std::memcpy(copy.get(), data, size);
    } else {
        size = 0;
    }
    m_data = std::move(copy);
    m_size = size;
    m_capacity = size;
}

std::uint8_t* ByteArray::data(std::uint32_t index) {
    return index < m_size ? m_data.get() + index : nullptr;
}

const std::uint8_t* ByteArray::data(std::uint32_t index) const {
    return index < m_size ? m_data.get() + index : nullptr;
}

std::uint8_t ByteArray::getAt(std::uint32_t index) const {
    return index < m_size ? m_data[index] : 0;
}

void ByteArray::setAt(std::uint32_t index, std::uint8_t value) {
    if (index < m_size)
        m_data[index] = value;
}

void ByteArray::resize(std::uint32_t size) {
    // Within the block only the size moves: bytes left behind by an earlier shrink come
    // back as they were. Only a new block starts from zeros.
    if (size <= m_capacity) {
        m_size = size;
        return;
    }
    auto grown = std::make_unique<std::uint8_t[]>(size);
    if (m_size != 0)
        std::memcpy(grown.get(), m_data.get(), m_size);
    m_data = std::move(grown);
    m_size = size;
    m_capacity = size;
}

void ByteArray::clear() {
    m_data.reset();
    m_size = 0;
    m_capacity = 0;
}

stdstr ByteArray::toString() const {
    if (m_size == 0)
        return stdstr();
    return stdstr::toTString(std::string_view(reinterpret_cast<const char*>(m_data.get()), m_size));
}
