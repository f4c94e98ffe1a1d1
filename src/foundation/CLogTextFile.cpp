#include "foundation/CLogTextFile.h"

#include "foundation/SystemPaths.h"

#include <algorithm>
#include <bit>
#include <vector>

static_assert(std::endian::native == std::endian::little,
              "the trace file is UTF-16LE and is written straight from memory");

bool CLogTextFile::Open(const char16_t* path, int openMode) {
    if (!path)
        return false;
    stdstr fullPath(path);
    if (fullPath.empty() || fullPath.front() != u'/')
        fullPath = stdstr::toTString(SystemPaths::ProgramFolder()) + u"/" + fullPath;
    if (isOpen())
        close();
    unsigned flags = modeReadWrite | modeCreate;
    if (openMode == OpenModeAppend)
        flags |= modeNoTruncate;
    if (!open(fullPath.c_str(), flags))
        return false;
    if (openMode == OpenModeAppend)
        seekToEnd();
    else
        seekToStart();
    if (getLength() == 0) {
        static constexpr unsigned char mark[2] = {0xFF, 0xFE};
        write(mark, sizeof mark);
    }
    return true;
}

void CLogTextFile::SetMaxSize(std::uint32_t bytes) {
    m_maxSize = bytes;
    m_margin = static_cast<std::uint32_t>(bytes * 0.1);
}

void CLogTextFile::WriteText(std::u16string_view text) {
    if (!isOpen())
        return;
    // A failed write is dropped: nothing could report it.
    write(text.data(), static_cast<std::uint32_t>(text.size() * sizeof(char16_t)));
    if (m_flushAfterEveryWrite)
        flush();
    if (m_limitActive && getLength() > static_cast<std::int64_t>(m_maxSize))
        Roll();
}

void CLogTextFile::Roll() {
    if (!m_flushAfterEveryWrite)
        flush();
    const std::int64_t length = seekToEnd();
    const std::int64_t keepFrom = length - m_maxSize + m_margin;
    seek(keepFrom, begin);
    unsigned char scan[LineEndScan];
    const std::uint32_t scanned = read(scan, LineEndScan);
    const auto* lineEnd = std::find(scan, scan + scanned, 0x0A);
    const std::int64_t skip = lineEnd != scan + scanned ? (lineEnd - scan) + 1 : scanned;

    std::vector<unsigned char> piece(RollChunk);
    std::int64_t source = keepFrom + skip;
    std::int64_t destination = 0;
    for (;;) {
        const auto amount =
            static_cast<std::uint32_t>(std::min<std::int64_t>(length - source, RollChunk));
        if (amount == 0)
            break;
        seek(source, begin);
        const std::uint32_t got = read(piece.data(), amount);
        seek(destination, begin);
        if (!write(piece.data(), got) || got == 0)
            break;
        source += got;
        destination += got;
    }
    setEndOfFile();
    flush();
}
