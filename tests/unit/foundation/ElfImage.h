#pragma once
// Builds small ELF images for the tests of the package-note reader: 32- or 64-bit, either
// byte order, with the notes reachable through a PT_NOTE segment, a SHT_NOTE section or
// both. Nothing but the headers and the notes is in them.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

struct ElfImageShape {
    bool is64 = true;
    bool bigEndian = false;
    bool segments = true;
    bool sections = true;
    std::uint64_t align = 4;
    std::string owner = "FDO";
    std::uint32_t type = 0xcafe1a7e;
    std::string json = R"({"name":"sample","version":"2.3.4.5"})";
    // Padding NULs written after the text inside the note (the text size counts them).
    std::size_t trailingNuls = 1;
    // Header counts written as the extended-numbering escapes (PN_XNUM, e_shnum 0).
    bool extendedCounts = false;
};

class ElfImage {
public:
    explicit ElfImage(const ElfImageShape& shape) : m_shape(shape) { build(); }

    const std::vector<std::uint8_t>& bytes() const { return m_bytes; }
    // One past the last byte of the note region.
    std::size_t notesEnd() const { return m_notesEnd; }

    // A 64-bit little-endian image whose notes are reached only through its sections (built
    // from a shape without segments), given `count` PT_NOTE program headers that name
    // regions of `regionSize` zero bytes (notes with no owner) appended to it: the first at
    // the region's start, each next one `stride` bytes further (0: all the same region).
    static std::vector<std::uint8_t> WithNoteSegments(const ElfImage& sectionsOnly,
                                                      std::size_t count, std::size_t regionSize,
                                                      std::size_t stride) {
        std::vector<std::uint8_t> bytes = sectionsOnly.bytes();
        auto put = [&bytes](std::size_t at, std::uint64_t value, int size) {
            for (int i = 0; i < size; ++i)
                bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> 8 * i);
        };
        const std::size_t regionAt = (bytes.size() + 7) / 8 * 8;
        const std::size_t regionsEnd = regionAt + regionSize + stride * (count - 1);
        const std::size_t phoff = regionsEnd;
        const std::size_t phent = 56;
        bytes.resize(phoff + count * phent, 0);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t entry = phoff + i * phent;
            put(entry, 4, 4); // PT_NOTE
            put(entry + 8, regionAt + i * stride, 8);
            put(entry + 32, regionSize, 8);
            put(entry + 40, regionSize, 8);
            put(entry + 48, 4, 8);
        }
        put(32, phoff, 8);
        put(54, phent, 2);
        put(56, count, 2);
        return bytes;
    }

private:
    void put(std::size_t at, std::uint64_t value, int size) {
        if (m_bytes.size() < at + static_cast<std::size_t>(size))
            m_bytes.resize(at + static_cast<std::size_t>(size));
        for (int i = 0; i < size; ++i) {
            const int shift = m_shape.bigEndian ? 8 * (size - 1 - i) : 8 * i;
            m_bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> shift);
        }
    }
    void word(std::size_t at, std::uint64_t value) { put(at, value, m_shape.is64 ? 8 : 4); }
    std::size_t alignUp(std::size_t value) const {
        const std::size_t a = m_shape.align == 8 ? 8 : 4;
        return (value + a - 1) / a * a;
    }
    void note(std::size_t& at, const std::string& owner, std::uint32_t type,
              const std::string& text) {
        put(at, owner.size() + 1, 4);
        put(at + 4, text.size(), 4);
        put(at + 8, type, 4);
        std::size_t p = at + 12;
        put(p + owner.size(), 0, 1);
        for (std::size_t i = 0; i < owner.size(); ++i)
            m_bytes[p + i] = static_cast<std::uint8_t>(owner[i]);
        p = alignUp(p + owner.size() + 1);
        m_bytes.resize(std::max(m_bytes.size(), p + text.size()));
        for (std::size_t i = 0; i < text.size(); ++i)
            m_bytes[p + i] = static_cast<std::uint8_t>(text[i]);
        at = alignUp(p + text.size());
        m_bytes.resize(std::max(m_bytes.size(), at));
    }

    void build() {
        const bool w = m_shape.is64;
        const std::size_t header = w ? 64 : 52;
        const std::size_t phent = w ? 56 : 32;
        const std::size_t shent = w ? 64 : 40;
        m_bytes.assign(header, 0);
        m_bytes[0] = 0x7f;
        m_bytes[1] = 'E';
        m_bytes[2] = 'L';
        m_bytes[3] = 'F';
        m_bytes[4] = w ? 2 : 1;
        m_bytes[5] = m_shape.bigEndian ? 2 : 1;
        m_bytes[6] = 1;
        put(16, 3, 2); // ET_DYN
        put(18, w ? 62 : 3, 2);
        put(20, 1, 4);

        // Two program headers: a PT_LOAD that is not a note, then the PT_NOTE.
        const std::size_t phoff = header;
        const std::size_t notesAt = alignUp(phoff + 2 * phent);
        std::size_t at = notesAt;
        m_bytes.resize(notesAt, 0);
        note(at, "GNU", 3, std::string(20, '\x11'));
        note(at, m_shape.owner, m_shape.type,
             m_shape.json + std::string(m_shape.trailingNuls, '\0'));
        m_notesEnd = at;
        const std::size_t notesSize = at - notesAt;
        const std::size_t shoff = alignUp(at) + 8;
        m_bytes.resize(shoff, 0);

        if (m_shape.segments) {
            const std::size_t load = phoff;
            const std::size_t pnote = phoff + phent;
            put(load, 1, 4);
            put(pnote, 4, 4);
            if (w) {
                put(pnote + 8, notesAt, 8);
                put(pnote + 32, notesSize, 8);
                put(pnote + 40, notesSize, 8);
                put(pnote + 48, m_shape.align, 8);
            } else {
                put(pnote + 4, notesAt, 4);
                put(pnote + 16, notesSize, 4);
                put(pnote + 20, notesSize, 4);
                put(pnote + 28, m_shape.align, 4);
            }
            word(w ? 32 : 28, phoff);
            put(w ? 54 : 42, phent, 2);
            put(w ? 56 : 44, m_shape.extendedCounts ? 0xffff : 2, 2);
        }
        // Sections: the null section (which holds the counts under extended numbering),
        // one that is no note, then the SHT_NOTE.
        m_bytes.resize(shoff + 3 * shent, 0);
        if (m_shape.extendedCounts) {
            put(shoff + (w ? 32 : 20), 3, w ? 8 : 4); // sh_size: the number of sections
            put(shoff + (w ? 44 : 28), 2, 4);         // sh_info: the number of segments
        }
        put(shoff + shent + 4, 1, 4); // SHT_PROGBITS
        const std::size_t snote = shoff + 2 * shent;
        put(snote + 4, 7, 4);
        if (w) {
            put(snote + 24, notesAt, 8);
            put(snote + 32, notesSize, 8);
            put(snote + 48, m_shape.align, 8);
        } else {
            put(snote + 16, notesAt, 4);
            put(snote + 20, notesSize, 4);
            put(snote + 32, m_shape.align, 4);
        }
        if (m_shape.sections || m_shape.extendedCounts) {
            word(w ? 40 : 32, shoff);
            put(w ? 58 : 46, shent, 2);
            put(w ? 60 : 48, m_shape.extendedCounts ? 0 : 3, 2);
        }
        if (!m_shape.sections)
            put(snote + 4, 1, 4); // the note section becomes an ordinary one
    }

    ElfImageShape m_shape;
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_notesEnd = 0;
};
