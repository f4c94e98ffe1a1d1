// CloseWarnAnimation: the close warning's animation: a pointer goes to the
// product's icon in the taskbar, right-clicks it, the context menu pops up and the
// pointer settles on the default item. Drawn frame by frame, reduced to one
// palette and written as a looping GIF.
#pragma once

#include <QImage>

#include <vector>

namespace artwork {

class ArtworkOutput;

namespace closewarnanimation {

inline constexpr int width = 200;
inline constexpr int height = 120;

struct TimedFrame {
    QImage image;
    int delayCs;
};

// Every frame of the animation at the given scale, with its delay.
std::vector<TimedFrame> frames(int scale);

void write(ArtworkOutput& out);

} // namespace closewarnanimation
} // namespace artwork
