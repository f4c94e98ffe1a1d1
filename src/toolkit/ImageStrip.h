#pragma once
// An image list made from one bitmap: the bitmap is cut into as many whole images of the
// list's size as its width holds (a narrower rest is dropped, a taller bitmap is cut at
// the list's height), and the mask colour becomes transparent.

#include <QColor>
#include <QImage>
#include <QList>

class ImageStrip {
public:
    static QList<QImage> Split(const QImage& strip, int width, int height, QColor maskColour);
};
