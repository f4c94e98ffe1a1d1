#pragma once
// What one paint of a label draws, worked out from its settings without touching a
// window: the background (gradient bands, a fill, or nothing when transparent), the text
// runs with their colours and rectangles (the text, its 3D copy, the suffix) and the
// drawing flags. The widget only carries the plan out.

#include "toolkit/LabelGradient.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class LabelPaintPlan {
public:
    // The label's settings that painting reads.
    struct Look {
        std::uint32_t style = 0;
        QColor text;
        QColor threeD{0xFF, 0xFF, 0xFF};
        QColor defaultBrush;
        std::optional<QColor> userBrush;
        bool transparent = false;
        bool threeDText = false;
        bool threeDSunken = false;
        bool rotated = false;
        bool textHidden = false; // phase 0 of text blinking
        bool gradient = false;
        QColor gradientStart;
        QColor gradientEnd;
        QString suffix;
        QColor suffixColour;
        int suffixGap = 0;
    };

    struct TextRun {
        QRect rect;
        QColor colour;
        QString text;
        bool operator==(const TextRun&) const = default;
    };

    // Drawn off screen and copied in one piece (not when transparent).
    bool offscreen = false;
    std::vector<LabelGradient::Band> bands;
    std::optional<QColor> fill;
    // Text flags (LabelTextFlags::DT_*).
    std::uint32_t flags = 0;
    // Rotated text: one run drawn with its baseline at `rotatedOrigin`.
    bool rotated = false;
    QPoint rotatedOrigin;
    std::vector<TextRun> runs;

    // `text` is the window text (at most 2000 characters are taken); `textWidth` the
    // width of that text on one line in the label's font, for placing the suffix.
    static LabelPaintPlan Make(const Look& look, const QRect& client, const QString& text,
                               int textWidth);

    static constexpr int TextLimit = 2000;
};
