// qg-artwork: draws all the artwork of the program (bitmaps, icons, the close
// warning's animation, the event sounds) into a resources folder, with an index
// in ARTWORK.md. The output depends on nothing but this code, Qt and zlib.

#include "ArtworkOutput.h"
#include "CaptionButtons.h"
#include "Chimes.h"
#include "CloseWarnAnimation.h"
#include "DialogFrame.h"
#include "MainSkin.h"
#include "PanelButtons.h"
#include "Pictures.h"
#include "TrayIcons.h"

#include <exception>
#include <iostream>

namespace {

// Where a size or a use had to be chosen, the reason stays with the files.
const char* const notes =
    R"(- Button sizes come from the controls of the main dialog, whose dialog units are
  1.5 pixels wide and 13/8 pixels high ("MS Sans Serif" 8 at 96 dots per inch): window
  buttons 14 by 11 units are 21 by 18, section buttons 81 by 19 are 122 by 31. A button
  takes the size of its normal picture.
- The update button (60 by 13 units, 90 by 21) and the help button (40 by 13, 60 by 21)
  share one set of pictures (262, 263, 264). They are 90 by 21, so that the update text
  fits; the help button, at x = 722 in a window 782 wide, then reaches 30 pixels past the
  right edge and is cut by the window's outline there. Its text stands at the left (offset
  10), inside the visible part.
- Pictures that lie on the caption band carry the band behind them, for the row where
  their control stands: window buttons at row 5, update and help at row 31, the update
  mark 201 at row 34 (3, 19 and 21 dialog units). The large-font layout moves update and
  help up by 7 and the mark by 8 rows; the band's gradient is gentle enough that the
  step is faint.
- 254 is both the restore button's hover picture and the source of the shared 16 by 16
  image list; 282 is both the dialog frame's left edge and the source of the second image
  list. Each file serves its visible use, the button and the frame: the image lists get
  one image (cut from the 21-pixel-wide 254) and none (282 is 2 pixels wide). No window
  is given either list.
- 257 and 258 name no picture; there are no files for them.
- The tray icons exist twice, 218 to 227 with 238 and 228 to 237 with 239; the first set
  is only loaded on the Windows 95 family. Both sets hold the same pictures here.
- 201 is 16 by 16 (its control is 10 by 10 units, 15 by 16 pixels). The animation control
  of the close warning has no size of its own; 301 is 200 by 120. The taskbar picture of
  the close warning is 168 by 30.
- Bytes are the same on every run on one machine. Qt's raster painter may take other
  SIMD code on another processor and round a few edge pixels differently; the
  files are committed, so this only matters when they are drawn again.
)";

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: qg-artwork <resources-dir>\n";
        return 2;
    }
    try {
        artwork::ArtworkOutput out(argv[1]);
        artwork::mainskin::write(out);
        artwork::dialogframe::write(out);
        artwork::captionbuttons::write(out);
        artwork::panelbuttons::write(out);
        artwork::pictures::write(out);
        artwork::trayicons::write(out);
        artwork::closewarnanimation::write(out);
        artwork::chimes::write(out);
        out.setNotes(notes);
        out.writeIndex();
    } catch (const std::exception& e) {
        std::cerr << "qg-artwork: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
