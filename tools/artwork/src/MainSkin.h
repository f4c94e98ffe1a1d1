// MainSkin: the main window's background, drawn whole on one canvas and cut into
// the nine pieces that the background painter lays out: four corners, four tiles
// and the piece under the top left corner. Cutting from one drawing makes the
// pieces meet without seams at any window size.
#pragma once

#include <QImage>

namespace artwork {

class ArtworkOutput;

namespace mainskin {

// Logical size of the canvas: the main dialog's 521 by 276 dialog units in
// pixels at 96 dots per inch.
inline constexpr int canvasWidth = 782;
inline constexpr int canvasHeight = 449;

// Width of the left column; the page area starts right of it.
inline constexpr int sidebarWidth = 141;

QImage drawCanvas(int scale);

void write(ArtworkOutput& out);

} // namespace mainskin
} // namespace artwork
