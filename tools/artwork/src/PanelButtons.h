// PanelButtons: the buttons that carry a text drawn by the program: the section
// buttons of the main window's left column, the link-like buttons on its caption
// band (help, update), and the light push buttons of the dialogs and the wizard.
// The pictures hold no text; each state's picture suits the text colour that the
// buttons are given for that state.
#pragma once

#include <QImage>

namespace artwork {

class ArtworkOutput;

namespace panelbuttons {

enum class State { Normal, Pressed, Hover, Disabled };

// Section button of the left column, 122 by 31.
QImage drawSection(State state, int scale);

// Link button on the caption band, 90 by 21, lying on the band at row 31.
QImage drawBandLink(State state, int scale);

// Push button on a white dialog, w by h.
QImage drawPush(State state, int w, int h, int scale);

void write(ArtworkOutput& out);

} // namespace panelbuttons
} // namespace artwork
