#pragma once
// The common look of the plug-in's pages: a plain light page over the host's skinned
// background, a heading in the product's blue, a short introduction, grouped controls with
// even margins, and coloured lamps for states. Every page is built from these, so that the
// five look like one product.

#include <QColor>
#include <QFont>
#include <QString>

class QGroupBox;
class QLabel;
class QLayout;
class QWidget;

class PageStyle {
public:
    static constexpr int Margin = 16;
    static constexpr int Spacing = 10;

    static QColor Good() { return QColor(0x2e, 0x7d, 0x32); }
    static QColor Bad() { return QColor(0xc6, 0x28, 0x28); }
    static QColor Unknown() { return QColor(0x9e, 0x9e, 0x9e); }
    static QColor Accent() { return QColor(0x1d, 0x4e, 0x89); }
    static QColor Muted() { return QColor(0x52, 0x60, 0x6d); }

    // The page's own background and text colours, and its outer margins on `layout`.
    static void Dress(QWidget* page, QLayout* layout);
    static QLabel* Heading(const QString& text, QWidget* parent);
    // A paragraph that wraps, in a quieter colour.
    static QLabel* Intro(const QString& text, QWidget* parent);
    // A small line for remarks and outcomes of actions.
    static QLabel* Note(QWidget* parent);
    static QGroupBox* Group(const QString& title, QWidget* parent);
    // A round lamp of `colour`, as rich text for a label.
    static QString Lamp(const QColor& colour);
    // `font` made `factor` times as large, whether its size is in points or in pixels (the
    // host's fonts are in pixels).
    static QFont Scaled(QFont font, double factor);
    // A number with the locale's digit grouping.
    static QString Count(long long value);
};
