#include "app/QtScreenAreaSource.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>

namespace {

// A Qt rectangle's right and bottom are its last pixel; the foundation's are one past it.
Corvane::Rect ToRect(const QRect& rect) {
    return Corvane::Rect{rect.left(), rect.top(), rect.left() + rect.width(),
                         rect.top() + rect.height()};
}

} // namespace

std::optional<Corvane::ScreenArea> QtScreenAreaSource::primaryScreen() const {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return std::nullopt;
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return std::nullopt;
    Corvane::ScreenArea area;
    area.geometry = ToRect(screen->geometry());
    area.workArea = ToRect(screen->availableGeometry());
    area.bitsPerPixel = screen->depth();
    return area;
}
