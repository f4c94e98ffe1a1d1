#pragma once
// An INI file read and written in place, through the CFile interface, without holding the
// file in memory. The file text is UTF-8, the interface wide. It remembers where each
// section it has met begins, so that repeated lookups in a file of thousands of lines go
// straight to their section; a write moves the rest of the file to make or give back room.
//
// The language files are its main customers. Its rules are old and some are odd; the odd
// ones are kept on purpose because the language files in the field were written for them:
//   - "//" starts a comment anywhere in a line, also inside a value, unless a ':' stands
//     directly before it ("http://host/" survives, "a//b" reads "a");
//   - blanks and carriage returns are removed at the end of a line, nothing at its front,
//     so "key = value" holds the key "key " with the value " value";
//   - a read compares keys with case, a write without: "Key=" is updated through "key",
//     and a later read of "key" still does not find it;
//   - a section found again from the index compares its name with case, a scan without;
//   - a last line without a line feed is not seen;
//   - a section name is cut to 299 bytes, and a null or empty one means "default".

#include "foundation/CFile.h"
#include "foundation/CriticalSection.h"
#include "foundation/SyncLock.h"
#include "foundation/stdstr.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

template <class TFile>
class CIniFileT {
public:
    // The section used for a null or empty section name.
    static constexpr const char* DefaultSection = "default";

    // Opens the file, creating it when it does not exist (so that a writable path always
    // gives an object with an open, possibly empty, file).
    explicit CIniFileT(const char16_t* path);
    explicit CIniFileT(const stdstr& path) : CIniFileT(path.c_str()) {}
    virtual ~CIniFileT() = default;
    CIniFileT(const CIniFileT&) = delete;
    CIniFileT& operator=(const CIniFileT&) = delete;

    // Sets `key` in `section` to `value`; a null `value` deletes the key. Nothing is
    // reported: a failed write leaves the file as far as it got.
    virtual void WriteString(const char16_t* section, const char16_t* key, const char16_t* value);
    // Writes `value` formatted with "%d".
    virtual void WriteInt(const char16_t* section, const char16_t* key, int value);

    // `out` becomes the value of `key` in `section`, or `defaultValue` (null: empty).
    stdstr& GetString(stdstr& out, const char16_t* section, const char16_t* key,
                      const char16_t* defaultValue);
    // Adds each entry of `section` to `map`; of two entries with the same key, the first
    // stays, as it is the one GetString finds.
    void GetSection(const char16_t* section, std::map<stdstr, stdstr>& map);

    bool IsOpen() const { return m_file.isOpen(); }
    const stdstr& GetPath() const { return m_path; }

    // The file object itself, for a file type with operations of its own (a test double
    // that counts what is read, for one).
    TFile& File() { return m_file; }

private:
    // Where a section seen so far begins.
    struct SectionRecord {
        std::uint32_t header;   // offset of the header line
        std::uint32_t position; // offset of the line behind the header
    };
    // The line buffer starts at this size and grows by it when a line does not fit.
    static constexpr std::size_t BufferStep = 1024;
    // The largest buffer a walk grows to by reading on (a long line may need more).
    static constexpr std::size_t MaxReadAhead = 64 * 1024;
    // Room for a section name with its terminator: longer names are cut to 299 bytes.
    static constexpr std::size_t SectionNameRoom = 300;
    // Bytes moved per step when a write shifts the rest of the file.
    static constexpr std::size_t MoveChunk = 64 * 1024;

    bool Open(bool creationAllowed);

    // The line reader. Lines are views into the buffer, valid until the next ReadLine.
    void StartReading(std::uint32_t position);
    // The length of the line plus 1 (its line feed), or -1 at the end of the file or when
    // the buffer cannot grow.
    std::int64_t ReadLine(std::string_view& line, std::uint32_t& lineStart);

    static std::string_view CleanLine(std::string_view line);
    static std::string_view WithoutByteOrderMark(std::string_view line);
    static bool MayBeHeader(std::string_view line);
    static std::optional<std::string_view> HeaderName(std::string_view cleanedLine);
    static bool EqualNoCase(std::string_view a, std::string_view b);
    static std::string SectionName(const char16_t* section);
    static std::string Utf8(const char16_t* text);

    bool FindSection(const std::string& name);
    bool CheckHeaderAt(std::uint32_t header, const std::string& name);
    // Walks the section behind m_sectionPosition for `key`; on success the line's offset and
    // its length with the line feed.
    bool FindKeyLine(const std::string& key, bool matchCase, std::uint32_t& lineStart,
                     std::uint32_t& lineLength, std::string* value);

    // Shifts everything from `from` to the end of the file by `delta` bytes (down when
    // positive, up over the bytes before `from` when negative), in pieces.
    bool MoveTail(std::uint32_t from, std::int64_t delta);
    bool WriteAt(std::uint32_t position, const std::string& bytes);
    // After a write: whatever the index knew at or behind `changed` may have moved.
    void ForgetSectionsFrom(std::uint32_t changed);

    TFile m_file;
    stdstr m_path;
    std::uint32_t m_sectionPosition = 0;
    std::optional<std::uint32_t> m_lastSectionStart;
    const std::u16string m_lineEnd = u"\r\n";
    Corvane::CriticalSection m_lock;
    std::map<std::string, SectionRecord> m_sections;
    // Where the scan for sections not yet indexed goes on: behind the last header it met.
    std::uint32_t m_scanFrom = 0;
    // The scan has met the end of the file: every header is indexed.
    bool m_scanComplete = false;

    std::vector<char> m_buffer;
    std::size_t m_begin = 0;    // first unread byte in the buffer
    std::size_t m_end = 0;      // end of the buffered bytes
    std::size_t m_searched = 0; // bytes before this hold no line feed
    std::uint32_t m_nextLine = 0;
    unsigned m_piecesRead = 0; // since the last StartReading
    std::size_t m_window = 0;  // the part of the buffer this walk reads into
    bool m_sawNul = false;     // a NUL byte was read since the last StartReading
    bool m_atEnd = false;
};

// ---------------------------------------------------------------------------------------

template <class TFile>
CIniFileT<TFile>::CIniFileT(const char16_t* path) : m_path(path) {
    Open(true);
}

template <class TFile>
bool CIniFileT<TFile>::Open(bool creationAllowed) {
    bool opened = m_file.open(m_path.c_str(), CFile::modeReadWrite) ||
                  m_file.open(m_path.c_str(), CFile::modeRead);
    if (!opened && creationAllowed)
        opened = m_file.open(m_path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    if (opened)
        m_file.seekToStart();
    return opened;
}

template <class TFile>
std::string CIniFileT<TFile>::Utf8(const char16_t* text) {
    return text ? stdstr::fromTString(std::u16string(text)) : std::string();
}

template <class TFile>
std::string CIniFileT<TFile>::SectionName(const char16_t* section) {
    if (!section || *section == u'\0')
        return DefaultSection;
    return Utf8(section);
}

template <class TFile>
void CIniFileT<TFile>::StartReading(std::uint32_t position) {
    m_file.seek(position, CFile::begin);
    m_begin = m_end = m_searched = 0;
    m_piecesRead = 0;
    m_window = BufferStep;
    m_sawNul = false;
    m_nextLine = position;
    m_atEnd = false;
}

template <class TFile>
std::int64_t CIniFileT<TFile>::ReadLine(std::string_view& line, std::uint32_t& lineStart) {
    for (;;) {
        const char* data = m_buffer.data();
        const void* feed =
            m_searched < m_end ? std::memchr(data + m_searched, '\n', m_end - m_searched) : nullptr;
        if (feed) {
            const auto at = static_cast<std::size_t>(static_cast<const char*>(feed) - data);
            const std::size_t count = at - m_begin + 1;
            line = std::string_view(data + m_begin, at - m_begin);
            // The line was a C string: a NUL byte ends it there.
            if (m_sawNul)
                line = line.substr(0, line.find('\0'));
            lineStart = m_nextLine;
            m_nextLine += static_cast<std::uint32_t>(count);
            m_begin = m_searched = at + 1;
            return static_cast<std::int64_t>(count);
        }
        m_searched = m_end;
        if (m_atEnd)
            return -1; // a last line without a line feed is not delivered
        if (m_begin > 0) {
            std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
            m_end -= m_begin;
            m_searched = m_end;
            m_begin = 0;
        }
        // The buffer starts at one step for each walk and grows by a step when a line does
        // not fit. A walk that goes on reading gets larger pieces, so that a long section
        // costs few system calls while a header check reads one small piece.
        if (m_end == m_window)
            m_window += BufferStep;
        else if (m_piecesRead > 0)
            m_window = std::max(m_window, std::min(m_window * 2, MaxReadAhead));
        if (m_buffer.size() < m_window) {
            try {
                m_buffer.resize(m_window);
            } catch (const std::bad_alloc&) {
                return -1; // stops the reader as the end of the file would
            }
        }
        ++m_piecesRead;
        const std::uint32_t got =
            m_file.read(m_buffer.data() + m_end, static_cast<std::uint32_t>(m_window - m_end));
        if (got == 0)
            m_atEnd = true;
        else if (std::memchr(m_buffer.data() + m_end, '\0', got))
            m_sawNul = true;
        m_end += got;
    }
}

template <class TFile>
std::string_view CIniFileT<TFile>::CleanLine(std::string_view line) {
    std::size_t length = line.size();
    std::size_t slash = line.find('/');
    while (slash != std::string_view::npos && slash + 1 < length) {
        if (line[slash + 1] == '/') {
            // "//" behind a ':' is part of a link, not a comment.
            if (slash > 0 && line[slash - 1] == ':') {
                slash = line.find('/', slash + 2);
                continue;
            }
            length = slash;
            break;
        }
        slash = line.find('/', slash + 1);
    }
    // Tabs stay and nothing is trimmed at the front: blanks there belong to the key.
    while (length > 0 && (line[length - 1] == ' ' || line[length - 1] == '\r'))
        --length;
    return line.substr(0, length);
}

template <class TFile>
std::string_view CIniFileT<TFile>::WithoutByteOrderMark(std::string_view line) {
    if (line.size() >= 3 && static_cast<unsigned char>(line[0]) == 0xEF &&
        static_cast<unsigned char>(line[1]) == 0xBB && static_cast<unsigned char>(line[2]) == 0xBF)
        line.remove_prefix(3);
    return line;
}

template <class TFile>
bool CIniFileT<TFile>::MayBeHeader(std::string_view line) {
    line = WithoutByteOrderMark(line);
    return !line.empty() && line.front() == '[';
}

template <class TFile>
std::optional<std::string_view> CIniFileT<TFile>::HeaderName(std::string_view line) {
    // Every header may carry the mark, not only the first line: files were joined.
    line = WithoutByteOrderMark(line);
    if (line.size() < 2 || line.front() != '[' || line.back() != ']')
        return std::nullopt;
    return line.substr(1, std::min(line.size() - 2, SectionNameRoom - 1));
}

template <class TFile>
bool CIniFileT<TFile>::EqualNoCase(std::string_view a, std::string_view b) {
    // Byte-wise, ASCII letters only: names and keys are compared as 8-bit text.
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; };
               return lower(x) == lower(y);
           });
}

template <class TFile>
bool CIniFileT<TFile>::CheckHeaderAt(std::uint32_t header, const std::string& name) {
    StartReading(header);
    std::string_view line;
    std::uint32_t lineStart = 0;
    const std::int64_t count = ReadLine(line, lineStart);
    if (count < 0)
        return false;
    const auto found = HeaderName(CleanLine(line));
    if (!found || *found != name)
        return false;
    m_sectionPosition = header + static_cast<std::uint32_t>(count);
    m_lastSectionStart = header;
    return true;
}

template <class TFile>
bool CIniFileT<TFile>::FindSection(const std::string& name) {
    if (m_lastSectionStart && CheckHeaderAt(*m_lastSectionStart, name))
        return true;
    const auto indexed = m_sections.find(name);
    if (indexed != m_sections.end() && CheckHeaderAt(indexed->second.header, name))
        return true;
    // Every header is indexed already: a scan would meet none.
    if (m_scanComplete)
        return false;

    // The scan compares without case, unlike the two checks above: a name spelled with
    // another case is found here as long as its section has not been indexed yet.
    StartReading(m_scanFrom);
    std::string_view line;
    std::uint32_t lineStart = 0;
    std::int64_t count;
    while ((count = ReadLine(line, lineStart)) >= 0) {
        // Cleaning only shortens a line: one that does not start as a header is none.
        if (!MayBeHeader(line))
            continue;
        const auto header = HeaderName(CleanLine(line));
        if (!header)
            continue;
        const auto position = lineStart + static_cast<std::uint32_t>(count);
        m_sections.emplace(std::string(*header), SectionRecord{lineStart, position});
        m_scanFrom = position;
        if (EqualNoCase(*header, name)) {
            m_sectionPosition = position;
            m_lastSectionStart = lineStart;
            return true;
        }
    }
    m_scanComplete = m_atEnd;
    return false;
}

template <class TFile>
bool CIniFileT<TFile>::FindKeyLine(const std::string& key, bool matchCase, std::uint32_t& lineStart,
                                   std::uint32_t& lineLength, std::string* value) {
    StartReading(m_sectionPosition);
    std::string_view line;
    std::int64_t count;
    while ((count = ReadLine(line, lineStart)) >= 0) {
        line = CleanLine(line);
        // No key fits in one character; this also passes over blank and comment lines.
        if (line.size() <= 1)
            continue;
        if (line.front() == '[')
            return false;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        const std::string_view name = line.substr(0, equals);
        if (matchCase ? name == key : EqualNoCase(name, key)) {
            lineLength = static_cast<std::uint32_t>(count);
            if (value)
                value->assign(line.substr(equals + 1));
            return true;
        }
    }
    return false;
}

template <class TFile>
stdstr& CIniFileT<TFile>::GetString(stdstr& out, const char16_t* section, const char16_t* key,
                                    const char16_t* defaultValue) {
    SyncLock lock(m_lock);
    std::string value;
    std::uint32_t lineStart = 0;
    std::uint32_t lineLength = 0;
    if (FindSection(SectionName(section)) &&
        FindKeyLine(Utf8(key), true, lineStart, lineLength, &value)) {
        out = stdstr::toTString(std::string_view(value));
        return out;
    }
    out = stdstr(defaultValue);
    return out;
}

template <class TFile>
void CIniFileT<TFile>::GetSection(const char16_t* section, std::map<stdstr, stdstr>& map) {
    SyncLock lock(m_lock);
    if (!FindSection(SectionName(section)))
        return;
    StartReading(m_sectionPosition);
    std::string_view line;
    std::uint32_t lineStart = 0;
    while (ReadLine(line, lineStart) >= 0) {
        line = CleanLine(line);
        if (line.size() <= 1)
            continue;
        if (line.front() == '[')
            return;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        map.emplace(stdstr::toTString(line.substr(0, equals)),
                    stdstr::toTString(line.substr(equals + 1)));
    }
}

template <class TFile>
bool CIniFileT<TFile>::WriteAt(std::uint32_t position, const std::string& bytes) {
    if (m_file.seek(position, CFile::begin) != position)
        return false;
    return m_file.write(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

template <class TFile>
bool CIniFileT<TFile>::MoveTail(std::uint32_t from, std::int64_t delta) {
    const std::int64_t length = m_file.getLength();
    if (length < 0 || delta == 0)
        return length >= 0;
    std::vector<char> chunk(MoveChunk);
    if (delta > 0) {
        // Make room: copy from the end backwards so nothing is overwritten before it moved.
        std::int64_t end = length;
        while (end > from) {
            const auto size = static_cast<std::uint32_t>(
                std::min<std::int64_t>(static_cast<std::int64_t>(MoveChunk), end - from));
            const std::int64_t start = end - size;
            if (m_file.seek(start, CFile::begin) != start ||
                m_file.read(chunk.data(), size) != size)
                return false;
            if (m_file.seek(start + delta, CFile::begin) != start + delta ||
                !m_file.write(chunk.data(), size))
                return false;
            end = start;
        }
        return true;
    }
    // Give room back: copy forwards, then cut the file.
    for (std::int64_t position = from; position < length;) {
        const auto size = static_cast<std::uint32_t>(
            std::min<std::int64_t>(static_cast<std::int64_t>(MoveChunk), length - position));
        if (m_file.seek(position, CFile::begin) != position ||
            m_file.read(chunk.data(), size) != size)
            return false;
        if (m_file.seek(position + delta, CFile::begin) != position + delta ||
            !m_file.write(chunk.data(), size))
            return false;
        position += size;
    }
    return m_file.setLength(length + delta);
}

template <class TFile>
void CIniFileT<TFile>::ForgetSectionsFrom(std::uint32_t changed) {
    std::erase_if(m_sections,
                  [changed](const auto& entry) { return entry.second.header >= changed; });
    if (m_lastSectionStart && *m_lastSectionStart >= changed)
        m_lastSectionStart.reset();
    m_scanFrom = 0;
    for (const auto& entry : m_sections)
        m_scanFrom = std::max(m_scanFrom, entry.second.position);
    m_scanComplete = false;
}

template <class TFile>
void CIniFileT<TFile>::WriteString(const char16_t* section, const char16_t* key,
                                   const char16_t* value) {
    SyncLock lock(m_lock);
    if (!m_file.isOpen() && value && !Open(true))
        return;
    const std::string sectionName = SectionName(section);
    const std::string keyName = Utf8(key);
    std::uint32_t lineStart = 0;
    std::uint32_t lineLength = 0;

    if (!value) {
        // Deleting from a missing section leaves the file alone; the section is not made.
        if (FindSection(sectionName) &&
            FindKeyLine(keyName, false, lineStart, lineLength, nullptr)) {
            MoveTail(lineStart + lineLength, -static_cast<std::int64_t>(lineLength));
            // Every section behind the line moved up; their positions must be read again.
            ForgetSectionsFrom(lineStart);
        }
        return;
    }

    const std::string lineEnd = stdstr::fromTString(m_lineEnd);
    if (!FindSection(sectionName)) {
        // The leading line end also ends a last line that had none.
        const std::string header = lineEnd + "[" + sectionName + "]" + lineEnd;
        const std::int64_t end = m_file.seekToEnd();
        if (end < 0 || !m_file.write(header.data(), static_cast<std::uint32_t>(header.size())))
            return;
        m_sectionPosition =
            static_cast<std::uint32_t>(end + static_cast<std::int64_t>(header.size()));
    }

    const std::string newLine = keyName + "=" + Utf8(value) + lineEnd;
    std::uint32_t changed;
    if (FindKeyLine(keyName, false, lineStart, lineLength, nullptr)) {
        // The key keeps the spelling of this call, not that of the file.
        if (newLine.size() != lineLength)
            MoveTail(lineStart + lineLength, static_cast<std::int64_t>(newLine.size()) -
                                                 static_cast<std::int64_t>(lineLength));
        changed = lineStart;
    } else {
        changed = m_sectionPosition;
        MoveTail(changed, static_cast<std::int64_t>(newLine.size()));
    }
    WriteAt(changed, newLine);
    m_file.flush();
    ForgetSectionsFrom(changed);
}

template <class TFile>
void CIniFileT<TFile>::WriteInt(const char16_t* section, const char16_t* key, int value) {
    stdstr text;
    text.Format(u"%d", value);
    WriteString(section, key, text.c_str());
}

extern template class CIniFileT<CFile>;
