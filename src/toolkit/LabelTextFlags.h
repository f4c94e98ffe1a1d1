#pragma once
// How a label's static style becomes text-drawing flags, and those flags as Qt's.

#include <QString>

#include <cstdint>

class LabelTextFlags {
public:
    // Static styles (low five bits are the type).
    static constexpr std::uint32_t SS_LEFT = 0x0;
    static constexpr std::uint32_t SS_CENTER = 0x1;
    static constexpr std::uint32_t SS_RIGHT = 0x2;
    static constexpr std::uint32_t SS_LEFTNOWORDWRAP = 0xC;
    static constexpr std::uint32_t SS_TYPEMASK = 0x1F;
    static constexpr std::uint32_t SS_NOTIFY = 0x100;
    static constexpr std::uint32_t SS_CENTERIMAGE = 0x200;
    // Text-drawing flags.
    static constexpr std::uint32_t DT_LEFT = 0x0;
    static constexpr std::uint32_t DT_CENTER = 0x1;
    static constexpr std::uint32_t DT_RIGHT = 0x2;
    static constexpr std::uint32_t DT_VCENTER = 0x4;
    static constexpr std::uint32_t DT_BOTTOM = 0x8;
    static constexpr std::uint32_t DT_WORDBREAK = 0x10;
    static constexpr std::uint32_t DT_SINGLELINE = 0x20;

    // Centre and word break for SS_CENTER, right and word break for SS_RIGHT, nothing for
    // SS_LEFTNOWORDWRAP, word break otherwise. SS_CENTERIMAGE makes it centred, and
    // vertically centred on a single line when the text holds no "\r\n" (a bare "\n" is
    // not looked for).
    static std::uint32_t FromStyle(std::uint32_t style, const QString& text);

    // The flags for QPainter::drawText (alignment and Qt::TextWordWrap/TextSingleLine).
    static int ToQt(std::uint32_t flags);
};
