#pragma once
// What this plug-in writes into the 536-byte page records of the contract, and reads back
// when the host asks for a page: a mark, a layout version, the record's index, the page it
// describes and the page's title. The host never looks inside; the mark lets CreatePage
// refuse a block that GetPageInfo did not fill.

#include "PageKind.h"

#include "mainwindow/PluginContract.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

class PageRecord {
public:
    static constexpr std::array<std::uint8_t, 4> Mark = {'Q', 'G', 'P', 'R'};
    static constexpr std::uint32_t LayoutVersion = 1;
    // Offsets of the fields; all numbers little-endian as the machine stores them.
    static constexpr std::size_t VersionOffset = 4;
    static constexpr std::size_t IndexOffset = 8;
    static constexpr std::size_t KindOffset = 12;
    static constexpr std::size_t TitleOffset = 16;
    // UTF-16 units of the title, its terminator included.
    static constexpr std::size_t TitleCapacity = 128;

    struct Content {
        std::int32_t index = -1;
        PageKind kind = PageKind::None;
        std::u16string title;
    };

    // Writes the record of `index`; the bytes behind the fields are zeroed.
    static void Fill(std::int32_t index, PluginPageRecord& record);
    // What a record holds; nothing for a null record or one without the mark and version.
    static std::optional<Content> Read(const PluginPageRecord* record);
    // The page's title as the record carries it.
    static std::u16string TitleOf(PageKind kind);
};
