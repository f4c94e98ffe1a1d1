#pragma once
// ElfPackageNote: the package note that the build writes into every binary (the
// freedesktop package-metadata format: an ELF note of owner "FDO", type 0xcafe1a7e, whose
// text is a JSON object with the package's "name" and "version"). Found through the
// program headers' PT_NOTE segments, else through the SHT_NOTE sections, in 32- and 64-bit
// files of either byte order. Every offset and size of the file is checked against its
// length: a truncated or garbled file gives no note, never a read outside it.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

class ElfPackageNote {
public:
    static constexpr std::uint32_t NoteType = 0xcafe1a7e;
    // A note region larger than this is no binary's note segment and is not read.
    static constexpr std::uint64_t LargestNoteRegion = 1u << 20;
    // All the note regions of one file together are read up to this many bytes, each region
    // once, however many headers name them.
    static constexpr std::uint64_t MostNoteBytes = 4 * LargestNoteRegion;

    // The note's text (up to its first NUL), from an ELF image in memory or a file.
    static std::optional<std::string> textOf(std::span<const std::uint8_t> image);
    static std::optional<std::string> textOfFile(const std::string& path);
    // The same, also telling how many bytes of the image were read to find it.
    static std::optional<std::string> textOf(std::span<const std::uint8_t> image,
                                             std::uint64_t& bytesRead);
};
