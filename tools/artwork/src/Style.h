// Style: the one palette and the few shared measures of the program's look. Every
// family of artwork takes its colours from here, so that the skin, the buttons,
// the icons and the animation read as one design.
#pragma once

#include <QColor>

namespace artwork::style {

// Brand colour: a deep teal. The caption band runs from the lighter to the darker
// shade, top to bottom; nothing varies along x, so that slices of it tile.
inline const QColor bandTop{22, 128, 141};
inline const QColor bandBottom{11, 90, 102};
inline const QColor bandOutline{7, 66, 76};

// Body of windows and dialogs.
inline const QColor body{255, 255, 255};
inline const QColor bodyOutline{143, 164, 172};

// Left column of the main window.
inline const QColor sidebar{238, 243, 245};
inline const QColor sidebarRule{211, 222, 226};

// Accent used sparingly: badges, the wizard banner's rule, the "on" check.
inline const QColor accent{55, 197, 155};

// Close buttons in captions.
inline const QColor closeHover{224, 72, 59};
inline const QColor closePressed{178, 54, 43};

// Tray icons: a lighter teal than the band, so that the icon holds against dark
// and light panels alike.
inline const QColor trayTop{33, 164, 178};
inline const QColor trayBottom{15, 122, 135};
inline const QColor trayOffTop{150, 158, 163};
inline const QColor trayOffBottom{110, 119, 124};
inline const QColor traySlash{216, 64, 52};

// Radii in logical pixels, from the window regions: an ellipse of 26 by 26 for the
// main window and of 25 by 25 for the dialogs.
inline constexpr double mainCornerRadius = 13.0;
inline constexpr double dialogCornerRadius = 12.5;

// Heights of the caption bands, from the bitmaps that carry them.
inline constexpr int mainBandHeight = 62;
inline constexpr int dialogBandHeight = 44;

} // namespace artwork::style
