// Raster: small drawing helpers shared by every family of artwork. Images are
// made at a scale (1 or 2) and drawn in logical pixels; the band gradient is
// filled row by row in device pixels so that every slice of it matches exactly.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QRect>

namespace artwork {

// A transparent (or, with opaque set, white) image of logical size w by h at the
// given scale.
QImage makeImage(int w, int h, int scale, bool opaque);

// Colour between a and b at t in [0, 1], rounded per channel.
QColor mix(const QColor& a, const QColor& b, double t);

// The same colour with a new alpha in [0, 1].
QColor withAlpha(const QColor& c, double alpha);

// Fills the logical rectangle with the caption band of the given logical height;
// bandRow is the band's row at the rectangle's top, so that a button lying on the
// band at y = 5 passes 5 and gets the same colours as the band around it.
void fillBand(QImage& image, int scale, const QRect& logical, int bandHeight, int bandRow);

// Rounded rectangle path.
QPainterPath roundedRect(const QRectF& r, double radius);

// Keeps the image only inside the logical path, with soft edges.
void maskToPath(QImage& image, int scale, const QPainterPath& logicalPath);

// Logical crop of an image drawn at a scale.
QImage cropLogical(const QImage& image, int scale, const QRect& logical);

// Converts to the storage format: RGB when fully opaque, else non-premultiplied
// ARGB, with a fixed resolution, so that the PNG bytes depend on pixels only.
QImage forSaving(const QImage& image);

} // namespace artwork
