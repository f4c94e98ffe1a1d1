#pragma once
// The trace log's file: UTF-16 little-endian text with a byte order mark, kept within a size
// limit by moving its newest part down over its start when the limit is passed. The roll
// scans for a 0x0A byte, not a character, and writes no new mark; a rolled file therefore
// starts with the high byte of a line feed, and its text is aligned from the second byte on.

#include "foundation/CFile.h"
#include "foundation/stdstr.h"

#include <cstdint>
#include <string_view>

class CLogTextFile : public CFile {
public:
    // Open modes: 1 keeps the file and appends; any other value empties it.
    static constexpr int OpenModeAppend = 1;
    // Pieces in which a roll moves the file, and how far it looks for a line end.
    static constexpr std::uint32_t RollChunk = 0x5000;
    static constexpr std::uint32_t LineEndScan = 300;

    CLogTextFile() = default;

    // A relative path is put in the program's folder.
    bool Open(const char16_t* path, int openMode);
    // Writes the characters without a terminator, then rolls if the file passed its limit.
    void WriteText(std::u16string_view text);

    void SetMaxSize(std::uint32_t bytes);
    std::uint32_t GetMaxSize() const { return m_maxSize; }
    std::uint32_t GetMargin() const { return m_margin; }
    void SetLimitActive(bool active) { m_limitActive = active; }
    void SetFlushAfterEveryWrite(bool flush) { m_flushAfterEveryWrite = flush; }

private:
    void Roll();

    bool m_flushAfterEveryWrite = false;
    stdstr m_path;
    bool m_limitActive = true;
    std::uint32_t m_maxSize = 0xA00000;
    std::uint32_t m_margin = 0;
};
