#include "toolkit/CustomTabBar.h"

#include "toolkit/TabLabelLayout.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionTab>
#include <QStylePainter>
#include <QWheelEvent>

namespace {
// The text of a tab is read into a buffer of this many characters.
constexpr int TextLimit = 1024;
// Room for the image and its gap when a tab has one.
constexpr int ImageRoom = 26;
} // namespace

CustomTabBar::CustomTabBar(QWidget* parent) : QTabBar(parent) {
    setFocusPolicy(Qt::NoFocus);
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(true);
}

void CustomTabBar::SetPageEnabledQuery(std::function<bool(int)> isEnabled) {
    m_isEnabled = std::move(isEnabled);
    update();
}

void CustomTabBar::SetImageList(std::vector<QPixmap> images) {
    m_images = std::move(images);
    for (int i = 0; i < count(); ++i)
        Relayout(i);
}

void CustomTabBar::SetTabImage(int index, int image) {
    if (index < 0 || index >= static_cast<int>(m_tabImages.size()))
        return;
    m_tabImages[static_cast<std::size_t>(index)] = image;
    Relayout(index);
}

// Setting a tab's text again is the bar's way to measure its tabs anew.
void CustomTabBar::Relayout(int index) {
    setTabText(index, tabText(index));
}

int CustomTabBar::TabImage(int index) const {
    if (index < 0 || index >= static_cast<int>(m_tabImages.size()))
        return -1;
    return m_tabImages[static_cast<std::size_t>(index)];
}

bool CustomTabBar::PageEnabled(int index) const {
    return !m_isEnabled || m_isEnabled(index);
}

void CustomTabBar::tabInserted(int index) {
    m_tabImages.insert(m_tabImages.begin() + index, -1);
    QTabBar::tabInserted(index);
}

void CustomTabBar::tabRemoved(int index) {
    if (index >= 0 && index < static_cast<int>(m_tabImages.size()))
        m_tabImages.erase(m_tabImages.begin() + index);
    QTabBar::tabRemoved(index);
}

QSize CustomTabBar::tabSizeHint(int index) const {
    QSize size = QTabBar::tabSizeHint(index);
    // Labels are drawn across, also on tabs at the side: those are as wide as their text.
    const bool sideways = shape() == RoundedWest || shape() == RoundedEast ||
                          shape() == TriangularWest || shape() == TriangularEast;
    if (sideways)
        size.transpose();
    const int image = TabImage(index);
    if (HasImageList() && image >= 0 && image < static_cast<int>(m_images.size()))
        size.rwidth() += ImageRoom;
    return size;
}

void CustomTabBar::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const int current = currentIndex();
    // The selected tab last, so that it overlaps its neighbours.
    for (int pass = 0; pass < 2; ++pass) {
        for (int i = 0; i < count(); ++i) {
            const bool selected = i == current;
            if (selected != (pass == 1))
                continue;
            QStyleOptionTab option;
            initStyleOption(&option, i);
            option.text.clear();
            option.icon = QIcon();
            painter.drawControl(QStyle::CE_TabBarTabShape, option);
            DrawLabel(painter, i, selected);
        }
    }
}

void CustomTabBar::DrawLabel(QPainter& painter, int index, bool selected) const {
    const QRect item = tabRect(index);
    const int image = TabImage(index);
    const bool itemHasImage = image >= 0 && image < static_cast<int>(m_images.size());
    const TabLabelLayout layout =
        TabLabelLayout::Compute(item, selected, HasImageList(), itemHasImage, m_bottomStyle);
    if (layout.drawImage)
        painter.drawPixmap(
            QRect(layout.imagePos, QSize(TabLabelLayout::ImageSize, TabLabelLayout::ImageSize)),
            m_images[static_cast<std::size_t>(image)]);

    const QString text = tabText(index).left(TextLimit);
    const QPen earlier = painter.pen();
    for (const TabLabelLayout::Pass& pass : TabLabelLayout::Passes(PageEnabled(index))) {
        QColor colour = palette().color(QPalette::Active, QPalette::ButtonText);
        if (pass.colour == TabLabelLayout::Colour::ButtonHighlight)
            colour = palette().color(QPalette::Active, QPalette::Light);
        else if (pass.colour == TabLabelLayout::Colour::GrayText)
            colour = palette().color(QPalette::Disabled, QPalette::Text);
        painter.setPen(colour);
        painter.drawText(layout.textRect.translated(pass.offset), layout.alignment, text);
    }
    painter.setPen(earlier);
}

void CustomTabBar::mousePressEvent(QMouseEvent* event) {
    const int index = tabAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index >= 0 && !PageEnabled(index)) {
        // A page that is switched off cannot be chosen.
        event->accept();
        return;
    }
    QTabBar::mousePressEvent(event);
}

void CustomTabBar::wheelEvent(QWheelEvent* event) {
    event->ignore();
}
