#pragma once
// The system's byte buffer. Out-of-range accesses are quiet: they read 0 or null and
// writes are dropped.

#include <cstdint>
#include <memory>

class stdstr;

class ByteArray {
public:
    ByteArray() = default;
    ByteArray(std::uint32_t size, std::uint8_t fill);
    ByteArray(const ByteArray& other);
    // The text as UTF-8, without a terminator.
    explicit ByteArray(const stdstr& text);
    ByteArray& operator=(const ByteArray& other);
    virtual ~ByteArray();

    // Frees what it holds and copies `size` bytes from `data`.
    virtual void set(const void* data, std::uint32_t size);

    std::uint32_t size() const { return m_size; }
    // Address of the byte at `index`, null when out of range.
    std::uint8_t* data(std::uint32_t index = 0);
    const std::uint8_t* data(std::uint32_t index = 0) const;
    std::uint8_t getAt(std::uint32_t index) const;
    void setAt(std::uint32_t index, std::uint8_t value);
    // Growing keeps the content and fills the new part with zeros; shrinking only lowers the
    // size and keeps the block, so growing again within it shows the old bytes.
    void resize(std::uint32_t size);
    void clear();
    // The bytes taken as UTF-8.
    stdstr toString() const;

private:
    std::uint32_t m_size = 0;
    std::uint32_t m_capacity = 0;
    std::unique_ptr<std::uint8_t[]> m_data;
};
