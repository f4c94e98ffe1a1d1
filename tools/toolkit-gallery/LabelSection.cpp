// Labels in every style that CLabel draws.

#include "Gallery.h"

#include "toolkit/CLabel.h"
#include "toolkit/LabelTextFlags.h"

#include <QGridLayout>
#include <QWidget>

namespace {

CLabel& Add(QGridLayout* grid, int row, int column, const QString& text, std::uint32_t style = 0) {
    auto* label = new CLabel(grid->parentWidget(), style);
    label->SetText(text);
    label->setFixedSize(220, 44);
    grid->addWidget(label, row, column);
    return *label;
}

} // namespace

QG_GALLERY_SECTION(Labels) {
    QWidget panel;
    panel.setAutoFillBackground(true);
    QPalette palette = panel.palette();
    palette.setColor(QPalette::Window, QColor(0xE8, 0xF1, 0xF4));
    panel.setPalette(palette);
    auto* grid = new QGridLayout(&panel);
    grid->setSpacing(8);

    Add(grid, 0, 0, QStringLiteral("Plain label, default colours"));
    Add(grid, 0, 1, QStringLiteral("Coloured text on cream"))
        .SetBkColor(0xDCF0F0)
        .SetTextColor(0x9B9BC5);
    Add(grid, 0, 2, QStringLiteral("Gradient background"))
        .SetBkColor(0x6B4A1F, 0xE0B070, true)
        .SetTextColor(0xFFFFFF)
        .SetFontBold(true);

    Add(grid, 1, 0, QStringLiteral("3D raised text"))
        .SetBkColor(0xC0C0C0)
        .Set3DText(true, false)
        .Set3DColor(0xFFFFFF)
        .SetFontSize(12);
    Add(grid, 1, 1, QStringLiteral("3D sunken text"))
        .SetBkColor(0xC0C0C0)
        .Set3DText(true, true)
        .Set3DColor(0xFFFFFF)
        .SetFontSize(12);
    Add(grid, 1, 2, QStringLiteral("Messages examined:"))
        .SetBkColor(0xFFFFFF)
        .SetSuffix(QStringLiteral("1,204"), 0x2020C0, 6)
        .SetFontBold(true);

    Add(grid, 2, 0, QStringLiteral("https://www.velloran.example/"))
        .SetBkColor(0xFFFFFF)
        .SetTextColor(0xCC6600)
        .SetFontUnderline(true)
        .SetLink(true, false)
        .SetLinkCursor();
    Add(grid, 2, 1, QStringLiteral("Centred on one line"), LabelTextFlags::SS_CENTERIMAGE)
        .SetBkColor(0xFFFFFF)
        .SetBorder(true);
    Add(grid, 2, 2, QStringLiteral("Centre image with\r\ntwo lines: not centred"),
        LabelTextFlags::SS_CENTERIMAGE)
        .SetBkColor(0xFFFFFF)
        .SetSunken(true);

    Add(grid, 3, 0, QStringLiteral("Right aligned, wrapped over two lines of text"),
        LabelTextFlags::SS_RIGHT)
        .SetBkColor(0xFFFFFF)
        .SetFontItalic(true);
    Add(grid, 3, 1, QStringLiteral("Transparent over the panel")).SetTransparent(true);
    Add(grid, 3, 2, QStringLiteral("Blinking, text shown"))
        .SetBkColor(0xFFFFFF)
        .FlashText(true)
        .OnBlinkTimer();

    auto* rotated = new CLabel(&panel);
    rotated->SetText(QStringLiteral("Rotated 30°"));
    rotated->SetBkColor(0xFFFFFF).SetRotationAngle(30, true).SetFontBold(true);
    rotated->setFixedSize(220, 130);
    grid->addWidget(rotated, 4, 0);
    Add(grid, 4, 1, QStringLiteral("Blinking, hidden phase")).SetBkColor(0xFFFFFF).FlashText(true);
    Add(grid, 4, 2, QStringLiteral("Bold, 9 points"))
        .SetBkColor(0xF0F0F0)
        .SetFontSize(9)
        .SetFontBold(true);

    gallery.Save(QStringLiteral("labels"), panel);
}
