#include "foundation/ElfPackageNote.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::uint32_t PT_NOTE_TYPE = 4;
constexpr std::uint32_t SHT_NOTE_TYPE = 7;
constexpr std::uint16_t PN_XNUM_COUNT = 0xffff;
// A real binary has a few dozen headers; this bounds the work for a garbled count.
constexpr std::uint64_t MostHeaders = 65536;

// Reads byte ranges of the file or image, refusing any that does not lie inside it.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t size() const = 0;
    bool read(std::uint64_t offset, void* out, std::uint64_t count) const {
        if (offset > size() || count > size() - offset)
            return false;
        m_bytesRead += count;
        return readInside(offset, out, static_cast<std::size_t>(count));
    }
    std::uint64_t bytesRead() const { return m_bytesRead; }

private:
    mutable std::uint64_t m_bytesRead = 0;
    virtual bool readInside(std::uint64_t offset, void* out, std::size_t count) const = 0;
};

class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::span<const std::uint8_t> image) : m_image(image) {}
    std::uint64_t size() const override { return m_image.size(); }

private:
    bool readInside(std::uint64_t offset, void* out, std::size_t count) const override {
        if (count > 0)
            std::memcpy(out, m_image.data() + offset, count);
        return true;
    }
    std::span<const std::uint8_t> m_image;
};

class FileSource : public ByteSource {
public:
    FileSource(int fd, std::uint64_t size) : m_fd(fd), m_size(size) {}
    std::uint64_t size() const override { return m_size; }

private:
    bool readInside(std::uint64_t offset, void* out, std::size_t count) const override {
        auto* bytes = static_cast<std::uint8_t*>(out);
        while (count > 0) {
            const ssize_t n = ::pread(m_fd, bytes, count, static_cast<off_t>(offset));
            if (n <= 0)
                return false;
            bytes += n;
            count -= static_cast<std::size_t>(n);
            offset += static_cast<std::uint64_t>(n);
        }
        return true;
    }
    int m_fd;
    std::uint64_t m_size;
};

// Fields of the file's own byte order and word size.
class ElfLayout {
public:
    bool is64 = false;
    bool bigEndian = false;

    std::uint64_t field(const std::uint8_t* p, int bytes) const {
        std::uint64_t value = 0;
        for (int i = 0; i < bytes; ++i) {
            const int index = bigEndian ? i : bytes - 1 - i;
            value = (value << 8) | p[index];
        }
        return value;
    }
    std::uint64_t word(const std::uint8_t* p) const { return field(p, is64 ? 8 : 4); }
};

std::uint64_t AlignUp(std::uint64_t value, std::uint64_t align) {
    return (value + align - 1) & ~(align - 1);
}

// Notes in a region aligned to 8 (64-bit property notes) pad their name and text to 8
// bytes; all others to 4.
std::uint64_t NoteAlignment(std::uint64_t regionAlign) {
    return regionAlign == 8 ? 8 : 4;
}

std::optional<std::string>
FindInNotes(const ElfLayout& layout, const std::vector<std::uint8_t>& notes, std::uint64_t align) {
    const std::uint64_t size = notes.size();
    std::uint64_t position = 0;
    while (size - position >= 12) {
        const std::uint8_t* head = notes.data() + position;
        const std::uint64_t nameSize = layout.field(head, 4);
        const std::uint64_t textSize = layout.field(head + 4, 4);
        const std::uint64_t type = layout.field(head + 8, 4);
        const std::uint64_t nameAt = position + 12;
        if (nameSize > size - nameAt)
            return std::nullopt;
        const std::uint64_t textAt = AlignUp(nameAt + nameSize, align);
        if (textAt > size || textSize > size - textAt)
            return std::nullopt;

        std::string_view owner(reinterpret_cast<const char*>(notes.data() + nameAt),
                               static_cast<std::size_t>(nameSize));
        while (!owner.empty() && owner.back() == '\0')
            owner.remove_suffix(1);
        if (owner == "FDO" && type == ElfPackageNote::NoteType) {
            const char* text = reinterpret_cast<const char*>(notes.data() + textAt);
            const std::string_view whole(text, static_cast<std::size_t>(textSize));
            return std::string(whole.substr(0, whole.find('\0')));
        }
        position = AlignUp(textAt + textSize, align);
        if (position > size)
            return std::nullopt;
    }
    return std::nullopt;
}

// What the note regions of one file may still cost. Every header may name a region of up
// to the largest size, and a small file can hold tens of thousands of headers naming the
// same or overlapping regions: each region is read once, and all of them together no more
// than a few times the largest one.
class NoteBudget {
public:
    bool take(std::uint64_t offset, std::uint64_t size, std::uint64_t align) {
        if (size > m_left || !m_seen.emplace(offset, size, align).second)
            return false;
        m_left -= size;
        return true;
    }

private:
    std::uint64_t m_left = ElfPackageNote::MostNoteBytes;
    std::set<std::tuple<std::uint64_t, std::uint64_t, std::uint64_t>> m_seen;
};

std::optional<std::string> ReadRegion(const ByteSource& source, const ElfLayout& layout,
                                      NoteBudget& budget, std::uint64_t offset, std::uint64_t size,
                                      std::uint64_t align) {
    if (size < 12 || size > ElfPackageNote::LargestNoteRegion)
        return std::nullopt;
    // Outside the file it is refused below without a read, so it need not cost anything.
    if (offset > source.size() || size > source.size() - offset)
        return std::nullopt;
    const std::uint64_t noteAlign = NoteAlignment(align);
    if (!budget.take(offset, size, noteAlign))
        return std::nullopt;
    std::vector<std::uint8_t> notes(static_cast<std::size_t>(size));
    if (!source.read(offset, notes.data(), size))
        return std::nullopt;
    return FindInNotes(layout, notes, noteAlign);
}

struct Header {
    std::uint64_t programOffset = 0;
    std::uint64_t programEntrySize = 0;
    std::uint64_t programCount = 0;
    std::uint64_t sectionOffset = 0;
    std::uint64_t sectionEntrySize = 0;
    std::uint64_t sectionCount = 0;
};

// Section 0 holds the real counts when they do not fit the header's 16-bit fields.
bool ReadSectionZero(const ByteSource& source, const ElfLayout& layout, const Header& header,
                     std::uint64_t& size, std::uint64_t& info) {
    const std::uint64_t minimum = layout.is64 ? 64 : 40;
    if (header.sectionOffset == 0 || header.sectionEntrySize < minimum)
        return false;
    std::uint8_t entry[64] = {};
    if (!source.read(header.sectionOffset, entry, minimum))
        return false;
    size = layout.is64 ? layout.field(entry + 32, 8) : layout.field(entry + 20, 4);
    info = layout.is64 ? layout.field(entry + 44, 4) : layout.field(entry + 28, 4);
    return true;
}

std::optional<std::string> FromSegments(const ByteSource& source, const ElfLayout& layout,
                                        const Header& header, NoteBudget& budget) {
    const std::uint64_t minimum = layout.is64 ? 56 : 32;
    if (header.programOffset == 0 || header.programEntrySize < minimum)
        return std::nullopt;
    const std::uint64_t count = std::min(header.programCount, MostHeaders);
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint8_t entry[56] = {};
        // Both factors are below 2^16, so only the sum can overflow.
        const std::uint64_t step = i * header.programEntrySize;
        if (header.programOffset > UINT64_MAX - step)
            return std::nullopt;
        if (!source.read(header.programOffset + step, entry, minimum))
            return std::nullopt;
        if (layout.field(entry, 4) != PT_NOTE_TYPE)
            continue;
        const std::uint64_t offset =
            layout.is64 ? layout.field(entry + 8, 8) : layout.field(entry + 4, 4);
        const std::uint64_t size =
            layout.is64 ? layout.field(entry + 32, 8) : layout.field(entry + 16, 4);
        const std::uint64_t align =
            layout.is64 ? layout.field(entry + 48, 8) : layout.field(entry + 28, 4);
        if (auto text = ReadRegion(source, layout, budget, offset, size, align))
            return text;
    }
    return std::nullopt;
}

std::optional<std::string> FromSections(const ByteSource& source, const ElfLayout& layout,
                                        const Header& header, NoteBudget& budget) {
    const std::uint64_t minimum = layout.is64 ? 64 : 40;
    if (header.sectionOffset == 0 || header.sectionEntrySize < minimum)
        return std::nullopt;
    std::uint64_t count = header.sectionCount;
    if (count == 0) {
        std::uint64_t info = 0;
        if (!ReadSectionZero(source, layout, header, count, info))
            return std::nullopt;
    }
    count = std::min(count, MostHeaders);
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint8_t entry[64] = {};
        const std::uint64_t step = i * header.sectionEntrySize;
        if (header.sectionOffset > UINT64_MAX - step)
            return std::nullopt;
        if (!source.read(header.sectionOffset + step, entry, minimum))
            return std::nullopt;
        if (layout.field(entry + 4, 4) != SHT_NOTE_TYPE)
            continue;
        const std::uint64_t offset =
            layout.is64 ? layout.field(entry + 24, 8) : layout.field(entry + 16, 4);
        const std::uint64_t size =
            layout.is64 ? layout.field(entry + 32, 8) : layout.field(entry + 20, 4);
        const std::uint64_t align =
            layout.is64 ? layout.field(entry + 48, 8) : layout.field(entry + 32, 4);
        if (auto text = ReadRegion(source, layout, budget, offset, size, align))
            return text;
    }
    return std::nullopt;
}

std::optional<std::string> FindNote(const ByteSource& source) {
    std::uint8_t ident[64] = {};
    if (!source.read(0, ident, 16))
        return std::nullopt;
    if (ident[0] != 0x7f || ident[1] != 'E' || ident[2] != 'L' || ident[3] != 'F')
        return std::nullopt;
    ElfLayout layout;
    if (ident[4] == 1)
        layout.is64 = false;
    else if (ident[4] == 2)
        layout.is64 = true;
    else
        return std::nullopt;
    if (ident[5] == 1)
        layout.bigEndian = false;
    else if (ident[5] == 2)
        layout.bigEndian = true;
    else
        return std::nullopt;

    const std::uint64_t headerSize = layout.is64 ? 64 : 52;
    if (!source.read(0, ident, headerSize))
        return std::nullopt;
    Header header;
    if (layout.is64) {
        header.programOffset = layout.field(ident + 32, 8);
        header.sectionOffset = layout.field(ident + 40, 8);
        header.programEntrySize = layout.field(ident + 54, 2);
        header.programCount = layout.field(ident + 56, 2);
        header.sectionEntrySize = layout.field(ident + 58, 2);
        header.sectionCount = layout.field(ident + 60, 2);
    } else {
        header.programOffset = layout.field(ident + 28, 4);
        header.sectionOffset = layout.field(ident + 32, 4);
        header.programEntrySize = layout.field(ident + 42, 2);
        header.programCount = layout.field(ident + 44, 2);
        header.sectionEntrySize = layout.field(ident + 46, 2);
        header.sectionCount = layout.field(ident + 48, 2);
    }
    if (header.programCount == PN_XNUM_COUNT) {
        std::uint64_t size = 0;
        std::uint64_t info = 0;
        header.programCount = ReadSectionZero(source, layout, header, size, info) ? info : 0;
    }
    NoteBudget budget;
    if (auto text = FromSegments(source, layout, header, budget))
        return text;
    return FromSections(source, layout, header, budget);
}

} // namespace

std::optional<std::string> ElfPackageNote::textOf(std::span<const std::uint8_t> image) {
    std::uint64_t bytesRead = 0;
    return textOf(image, bytesRead);
}

std::optional<std::string> ElfPackageNote::textOf(std::span<const std::uint8_t> image,
                                                  std::uint64_t& bytesRead) {
    const MemorySource source(image);
    auto text = FindNote(source);
    bytesRead = source.bytesRead();
    return text;
}

std::optional<std::string> ElfPackageNote::textOfFile(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (fd < 0)
        return std::nullopt;
    struct stat st {};
    std::optional<std::string> text;
    // Only regular files: a FIFO or a device could block or never end.
    if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode)) {
        const FileSource source(fd, static_cast<std::uint64_t>(st.st_size));
        text = FindNote(source);
    }
    ::close(fd);
    return text;
}
