#pragma once
// A thin polymorphic wrapper over an operating-system file descriptor. The INI reader and
// the trace log build on it. It reports by results and never throws.

#include <cstdint>

class CFile {
public:
    // Open flags: bits 0 and 1 hold the access.
    static constexpr unsigned modeRead = 0;
    static constexpr unsigned modeWrite = 1;
    static constexpr unsigned modeReadWrite = 2;
    static constexpr unsigned modeNoInherit = 0x80;
    static constexpr unsigned modeCreate = 0x1000;
    static constexpr unsigned modeNoTruncate = 0x2000;

    enum SeekOrigin { begin = 0, current = 1, end = 2 };

    CFile() = default;
    // Takes an open descriptor and owns it.
    explicit CFile(int handle);
    CFile(const char16_t* path, unsigned flags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    virtual ~CFile();

    virtual bool open(const char16_t* path, unsigned flags);
    virtual std::int64_t getPosition();
    // Returns the new position, or -1 on failure.
    virtual std::int64_t seek(std::int64_t offset, SeekOrigin origin);
    virtual bool setLength(std::int64_t length);
    virtual std::int64_t getLength();
    // The count read; 0 on failure or when count is 0.
    virtual std::uint32_t read(void* buffer, std::uint32_t count);
    // True when count is 0, otherwise only if everything was written.
    virtual bool write(const void* buffer, std::uint32_t count);
    virtual bool flush();
    // Deliberately inverted: false after a successful close, true when nothing was open or
    // the close failed. `open` relies on it, so an object with an open file must be
    // closed before it can be opened again.
    virtual bool close();
    virtual bool isOpen() const;
    virtual bool setEndOfFile();

    std::int64_t seekToEnd() { return seek(0, end); }
    std::int64_t seekToStart() { return seek(0, begin); }

    int handle() const { return m_handle; }

private:
    int m_handle = -1;
    bool m_ownsHandle = false;
};
