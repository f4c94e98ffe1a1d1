// Emblem: the product's mark (an envelope on a teal tile, with a check badge) in
// the forms the program needs: application icon, tray icons in their states and
// animation frames, and the white-tile version that sits on the caption band.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>

namespace artwork {

enum class TrayState { On, Off, Scanning };

// Tray icon drawn for exactly px by px pixels. frame (0..8) places the scanning
// light for TrayState::Scanning and is ignored otherwise.
QImage renderTrayIcon(int px, TrayState state, int frame);

// Application icon drawn for exactly px by px pixels.
QImage renderAppIcon(int px);

// The mark on the caption band: a white tile with a teal envelope, into r
// (logical coordinates of the painter).
void drawBandMark(QPainter& p, const QRectF& r);

// An envelope: paper with a folded flap drawn as a V.
void drawEnvelope(QPainter& p, const QRectF& r, const QColor& paper, const QColor& fold,
                  double foldWidth);

// A round badge with a check mark, with a ring of ringColour around it.
void drawCheckBadge(QPainter& p, const QPointF& centre, double radius, double ring,
                    const QColor& ringColour);

} // namespace artwork
