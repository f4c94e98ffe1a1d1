// CaptionButtons: the window buttons that sit on a caption band: minimise,
// maximise, restore and close of the main window (normal, pressed, hover,
// disabled) and the close button of the dialog frame (normal, hover, pressed).
// Each picture carries the slice of band behind it, so it can be copied as a block.
#pragma once

#include <QImage>

namespace artwork {

class ArtworkOutput;

namespace captionbuttons {

enum class Glyph { Minimise, Maximise, Restore, Close };
enum class State { Normal, Pressed, Hover, Disabled };

// A main window caption button, 21 by 18, lying on the band at row 5.
QImage drawMainButton(Glyph glyph, State state, int scale);

// The dialog frame's close button, 21 by 21, lying on the band at row 11.
QImage drawDialogClose(State state, int scale);

void write(ArtworkOutput& out);

} // namespace captionbuttons
} // namespace artwork
