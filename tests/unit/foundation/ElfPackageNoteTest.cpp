#include "foundation/ElfPackageNote.h"

#include "ElfImage.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sys/stat.h>

namespace {

const std::string Sample = R"({"name":"sample","version":"2.3.4.5"})";

std::optional<std::string> Read(const ElfImageShape& shape) {
    return ElfPackageNote::textOf(ElfImage(shape).bytes());
}

std::string FileOf(const TestSupport::SandboxRoot& sandbox, const std::string& name,
                   const std::vector<std::uint8_t>& bytes) {
    const std::string path = sandbox.file(name);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

TEST(ElfPackageNote, TheBuildWritesTheNoteIntoThisProgram) {
    EXPECT_EQ(ElfPackageNote::textOfFile("/proc/self/exe"),
              R"({"name":"ElfPackageNoteTest","version":"1.0.0.1"})");
}

TEST(ElfPackageNote, EveryWordSizeAndByteOrderIsRead) {
    for (const bool is64 : {true, false}) {
        for (const bool big : {false, true}) {
            ElfImageShape shape;
            shape.is64 = is64;
            shape.bigEndian = big;
            EXPECT_EQ(Read(shape), Sample) << is64 << big;
        }
    }
}

TEST(ElfPackageNote, TheNoteIsFoundThroughTheSegmentsOrTheSectionsAlone) {
    ElfImageShape segmentsOnly;
    segmentsOnly.sections = false;
    EXPECT_EQ(Read(segmentsOnly), Sample);
    ElfImageShape sectionsOnly;
    sectionsOnly.segments = false;
    EXPECT_EQ(Read(sectionsOnly), Sample);
    ElfImageShape neither;
    neither.segments = false;
    neither.sections = false;
    EXPECT_EQ(Read(neither), std::nullopt);
}

TEST(ElfPackageNote, NotesInARegionAlignedToEightArePaddedToEight) {
    for (const bool is64 : {true, false}) {
        ElfImageShape shape;
        shape.is64 = is64;
        shape.align = 8;
        shape.json = R"({"name":"x","version":"1"})"; // its length is no multiple of 8
        EXPECT_EQ(Read(shape), shape.json);
    }
}

TEST(ElfPackageNote, ExtendedHeaderCountsAreFollowed) {
    ElfImageShape shape;
    shape.extendedCounts = true;
    EXPECT_EQ(Read(shape), Sample);
    shape.segments = false;
    EXPECT_EQ(Read(shape), Sample);
}

TEST(ElfPackageNote, OnlyTheFdoOwnerAndTypeCount) {
    ElfImageShape otherOwner;
    otherOwner.owner = "GNU";
    EXPECT_EQ(Read(otherOwner), std::nullopt);
    ElfImageShape otherType;
    otherType.type = 0xcafe1a7f;
    EXPECT_EQ(Read(otherType), std::nullopt);
}

TEST(ElfPackageNote, TheTextEndsAtItsFirstNul) {
    ElfImageShape shape;
    shape.trailingNuls = 7;
    EXPECT_EQ(Read(shape), Sample);
    shape.trailingNuls = 0;
    EXPECT_EQ(Read(shape), Sample);
}

TEST(ElfPackageNote, ATruncatedImageHasNoNoteAndIsNeverReadBeyondItsEnd) {
    for (const bool is64 : {true, false}) {
        ElfImageShape shape;
        shape.is64 = is64;
        const ElfImage image(shape);
        const auto& bytes = image.bytes();
        for (std::size_t length = 0; length < image.notesEnd(); ++length)
            EXPECT_EQ(ElfPackageNote::textOf({bytes.data(), length}), std::nullopt) << length;
        EXPECT_EQ(ElfPackageNote::textOf(bytes), Sample);
    }
}

TEST(ElfPackageNote, AGarbledImageNeverCrashesTheReader) {
    for (const bool is64 : {true, false}) {
        for (const bool big : {false, true}) {
            ElfImageShape shape;
            shape.is64 = is64;
            shape.bigEndian = big;
            const ElfImage image(shape);
            for (std::size_t at = 0; at < image.bytes().size(); ++at) {
                for (const std::uint8_t mask : {0x01, 0x80, 0xff}) {
                    std::vector<std::uint8_t> garbled = image.bytes();
                    garbled[at] ^= mask;
                    const auto text = ElfPackageNote::textOf(garbled);
                    if (at >= image.notesEnd()) {
                        // Past the notes only the section table and padding lie, and the
                        // note segment comes first: the note is still the one written.
                        EXPECT_EQ(text, Sample) << at;
                    } else if (text) {
                        // Whatever is found is taken from the image, never made up.
                        const std::vector<std::uint8_t> taken(text->begin(), text->end());
                        const auto found =
                            std::search(garbled.begin(), garbled.end(), taken.begin(), taken.end());
                        EXPECT_NE(found, garbled.end()) << at;
                    }
                }
            }
        }
    }
}

TEST(ElfPackageNote, HugeOffsetsAndSizesAreRefused) {
    ElfImageShape shape;
    shape.sections = false;
    std::vector<std::uint8_t> bytes = ElfImage(shape).bytes();
    // The PT_NOTE's offset, then its size, set to the largest values.
    for (const std::size_t field : {64u + 56u + 8u, 64u + 56u + 32u}) {
        std::vector<std::uint8_t> garbled = bytes;
        for (std::size_t i = 0; i < 8; ++i)
            garbled[field + i] = 0xff;
        EXPECT_EQ(ElfPackageNote::textOf(garbled), std::nullopt);
    }
    // The program header table's offset.
    std::vector<std::uint8_t> farTable = bytes;
    for (std::size_t i = 0; i < 8; ++i)
        farTable[32 + i] = 0xff;
    EXPECT_EQ(ElfPackageNote::textOf(farTable), std::nullopt);
}

TEST(ElfPackageNote, ManyHeadersNamingOneBigRegionReadItOnce) {
    ElfImageShape shape;
    shape.segments = false;
    const ElfImage sectionsOnly(shape);
    const std::size_t region = ElfPackageNote::LargestNoteRegion;
    // The most headers a file can count without the extended escape (0xffff).
    const std::vector<std::uint8_t> bytes =
        ElfImage::WithNoteSegments(sectionsOnly, 65534, region, 0);
    std::uint64_t bytesRead = 0;
    // None of the segments holds the note, so it still comes from the sections.
    EXPECT_EQ(ElfPackageNote::textOf(bytes, bytesRead), Sample);
    // The headers themselves, the region once and the small note section: no region twice.
    const std::uint64_t headers = 65534u * 56u;
    EXPECT_GE(bytesRead, headers + region);
    EXPECT_LT(bytesRead, headers + 2 * region);
}

TEST(ElfPackageNote, ManyHeadersNamingOverlappingRegionsReadAFewOfThemAtMost) {
    ElfImageShape shape;
    shape.segments = false;
    const ElfImage sectionsOnly(shape);
    const std::size_t region = ElfPackageNote::LargestNoteRegion;
    // Each header names a region 16 bytes further on: all different, nearly all the same bytes.
    const std::vector<std::uint8_t> bytes =
        ElfImage::WithNoteSegments(sectionsOnly, 65534, region, 16);
    std::uint64_t bytesRead = 0;
    ElfPackageNote::textOf(bytes, bytesRead);
    const std::uint64_t headers = 65534u * 56u;
    EXPECT_LE(bytesRead, headers + ElfPackageNote::MostNoteBytes + 4096);
    EXPECT_GE(bytesRead, headers + ElfPackageNote::MostNoteBytes);
}

TEST(ElfPackageNote, ThingsThatAreNoElfHaveNoNote) {
    EXPECT_EQ(ElfPackageNote::textOf({}), std::nullopt);
    const std::string text = "#!/bin/sh\necho hello\n";
    EXPECT_EQ(
        ElfPackageNote::textOf({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}),
        std::nullopt);
    std::vector<std::uint8_t> badClass = ElfImage(ElfImageShape{}).bytes();
    badClass[4] = 3;
    EXPECT_EQ(ElfPackageNote::textOf(badClass), std::nullopt);
    std::vector<std::uint8_t> badOrder = ElfImage(ElfImageShape{}).bytes();
    badOrder[5] = 0;
    EXPECT_EQ(ElfPackageNote::textOf(badOrder), std::nullopt);
}

TEST(ElfPackageNote, FilesAreReadLikeImages) {
    TestSupport::SandboxRoot sandbox;
    ElfImageShape shape;
    shape.is64 = false;
    shape.bigEndian = true;
    const ElfImage image(shape);
    EXPECT_EQ(ElfPackageNote::textOfFile(FileOf(sandbox, "whole", image.bytes())), Sample);
    const std::vector<std::uint8_t> cut(
        image.bytes().begin(), image.bytes().begin() + static_cast<long>(image.notesEnd() - 1));
    EXPECT_EQ(ElfPackageNote::textOfFile(FileOf(sandbox, "cut", cut)), std::nullopt);
    EXPECT_EQ(ElfPackageNote::textOfFile(sandbox.file("missing")), std::nullopt);
    EXPECT_EQ(ElfPackageNote::textOfFile(sandbox.file("tmp")), std::nullopt);
    ASSERT_EQ(::mkfifo(sandbox.file("fifo").c_str(), 0600), 0);
    EXPECT_EQ(ElfPackageNote::textOfFile(sandbox.file("fifo")), std::nullopt);
}

} // namespace
