// DialogFrame: the frame of the program's own dialogs (About box, close warning,
// summary pop-up): caption band, edges, bottom and corners, drawn whole and cut
// into the eight pieces the frame painter lays out. The caption text is drawn by
// the program over the band and is not part of the pictures.
#pragma once

#include <QImage>

namespace artwork {

class ArtworkOutput;

namespace dialogframe {

QImage drawCanvas(int scale);

void write(ArtworkOutput& out);

} // namespace dialogframe
} // namespace artwork
