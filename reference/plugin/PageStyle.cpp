#include "PageStyle.h"

#include <QFont>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLocale>
#include <QPalette>
#include <QWidget>

#include <algorithm>

void PageStyle::Dress(QWidget* page, QLayout* layout) {
    QPalette palette = page->palette();
    palette.setColor(QPalette::Window, QColor(0xfb, 0xfc, 0xfd));
    palette.setColor(QPalette::WindowText, QColor(0x1f, 0x29, 0x33));
    page->setPalette(palette);
    page->setAutoFillBackground(true);
    if (layout != nullptr) {
        layout->setContentsMargins(Margin, Margin - 4, Margin, Margin - 4);
        layout->setSpacing(Spacing);
    }
}

QLabel* PageStyle::Heading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = Scaled(label->font(), 1.45);
    font.setBold(true);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Accent());
    label->setPalette(palette);
    label->setObjectName(QString::fromLatin1("heading"));
    return label;
}

QLabel* PageStyle::Intro(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Muted());
    label->setPalette(palette);
    return label;
}

QLabel* PageStyle::Note(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setWordWrap(true);
    label->setFont(Scaled(label->font(), 0.92));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Muted());
    label->setPalette(palette);
    return label;
}

QGroupBox* PageStyle::Group(const QString& title, QWidget* parent) {
    auto* group = new QGroupBox(title, parent);
    QFont font = group->font();
    font.setBold(true);
    group->setFont(font);
    return group;
}

QString PageStyle::Lamp(const QColor& colour) {
    return QString::fromLatin1("<span style=\"color:%1; font-size:large\">&#x25CF;</span>")
        .arg(colour.name());
}

QFont PageStyle::Scaled(QFont font, double factor) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * factor + 0.5)));
    return font;
}

QString PageStyle::Count(long long value) {
    return QLocale().toString(value);
}
