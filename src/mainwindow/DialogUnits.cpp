#include "mainwindow/DialogUnits.h"

#include "toolkit/DpiFontRule.h"

#include <QFont>
#include <QFontMetrics>
#include <QString>

namespace {
// The letters whose average width is the horizontal base unit.
const QString Alphabet = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
} // namespace

DialogUnits DialogUnits::FromFont(const QFont& font) {
    const QFontMetrics metrics(font);
    return FromMetrics(metrics.horizontalAdvance(Alphabet), metrics.height());
}

DialogUnits DialogUnits::FromMetrics(int alphabetExtent, int height) {
    // Rounded half up: twice the average, plus one, halved.
    return DialogUnits((alphabetExtent / 26 + 1) / 2, height);
}

int DialogUnits::ToPixelsX(int units) const {
    return DpiFontRule::MulDiv(units, m_baseX, 4);
}

int DialogUnits::ToPixelsY(int units) const {
    return DpiFontRule::MulDiv(units, m_baseY, 8);
}

QRect DialogUnits::ToPixels(const QRect& units) const {
    return QRect(ToPixelsX(units.x()), ToPixelsY(units.y()), ToPixelsX(units.width()),
                 ToPixelsY(units.height()));
}
