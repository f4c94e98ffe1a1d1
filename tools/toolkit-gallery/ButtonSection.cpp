// Every bitmap button of the program in every state it can show: normal, hot, held down,
// focused, disabled, and selected as a member of a group.

#include "Gallery.h"

#include "toolkit/CDibButtonCtrl.h"
#include "toolkit/QuillgateGUIRes.h"

#include <QApplication>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QWidget>

#include <array>
#include <cstdint>

namespace {

struct Family {
    const char* name;
    std::array<std::uint16_t, 6> bitmaps; // normal, pressed, hover, disabled, focused, twin
    std::array<std::uint32_t, 4> colours; // normal, pressed, hover, disabled
    const char* caption;
    int align;
    int xOffset;
    bool bold;
};

// As the windows set them up.
const Family Families[] = {
    {"minimise", {240, 241, 242, 243, 0, 0}, {0, 0, 0, 0}, "", 0, 0, false},
    {"maximise", {244, 245, 246, 247, 0, 0}, {0, 0, 0, 0}, "", 0, 0, false},
    {"restore", {252, 253, 254, 255, 0, 0}, {0, 0, 0, 0}, "", 0, 0, false},
    {"close", {248, 249, 250, 251, 0, 0}, {0, 0, 0, 0}, "", 0, 0, false},
    {"navigation",
     {256, 259, 260, 261, 256, 259},
     {0, 0xFFFFFF, 9909043, 0xC0C0C0},
     "Status",
     -1,
     30,
     true},
    {"top bar",
     {263, 264, 262, 263, 263, 0},
     {0xFFFFFF, 0, 65535, 0xC0C0C0},
     "Help",
     -1,
     10,
     false},
    {"push", {275, 276, 277, 278, 0, 0}, {0, 0, 9909043, 0xC0C0C0}, "OK", 0, 0, false},
    {"wide push",
     {291, 292, 293, 294, 0, 0},
     {0, 0, 9909043, 0xC0C0C0},
     "Check for updates",
     0,
     0,
     false},
};

enum class Look { Normal, Hot, Down, Focused, Disabled, Selected };
const std::array<std::pair<Look, const char*>, 6> Looks = {{{Look::Normal, "normal"},
                                                            {Look::Hot, "hot"},
                                                            {Look::Down, "held down"},
                                                            {Look::Focused, "focused"},
                                                            {Look::Disabled, "disabled"},
                                                            {Look::Selected, "selected"}}};

// Puts the button into a state the way the user would, with the events a window gets.
void Apply(CDibButtonCtrl& button, Look look) {
    const QPointF inside(button.width() / 2.0, button.height() / 2.0);
    switch (look) {
    case Look::Normal:
        break;
    case Look::Hot: {
        QMouseEvent move(QEvent::MouseMove, inside, inside, Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&button, &move);
        break;
    }
    case Look::Down: {
        QMouseEvent press(QEvent::MouseButtonPress, inside, inside, Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&button, &press);
        break;
    }
    case Look::Focused: {
        QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(&button, &focus);
        break;
    }
    case Look::Disabled:
        button.setEnabled(false);
        break;
    case Look::Selected:
        button.SetPushMode(false);
        button.SetCheckState(true);
        break;
    }
}

} // namespace

QG_GALLERY_SECTION(Buttons) {
    QuillgateGUIRes resources;
    resources.Create();
    const QFont normal = resources.GetNormalFont();
    const QFont bold = resources.GetBoldFont();

    QWidget panel;
    panel.setAutoFillBackground(true);
    QPalette palette = panel.palette();
    palette.setColor(QPalette::Window, QColor(0xD8, 0xDE, 0xE4));
    panel.setPalette(palette);
    auto* grid = new QGridLayout(&panel);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(8);

    for (std::size_t column = 0; column < Looks.size(); ++column)
        grid->addWidget(new QLabel(QString::fromLatin1(Looks[column].second), &panel), 0,
                        static_cast<int>(column) + 1);
    int row = 1;
    for (const Family& family : Families) {
        grid->addWidget(new QLabel(QString::fromLatin1(family.name), &panel), row, 0);
        for (std::size_t column = 0; column < Looks.size(); ++column) {
            auto* button = new CDibButtonCtrl(&panel, 1000 + row);
            const auto& b = family.bitmaps;
            button->SetStateBitmaps(b[0], b[1], b[2], b[3], b[4], b[5]);
            button->SetColors(family.colours[0], family.colours[1], family.colours[2],
                              family.colours[3]);
            const QString caption = QString::fromLatin1(family.caption);
            if (!caption.isEmpty())
                button->SetCaption(caption, family.bold ? &bold : &normal, family.align,
                                   family.xOffset, 0, 0);
            else
                button->SetToolTipText(QString::fromLatin1(family.name));
            button->setFixedSize(button->size());
            Apply(*button, Looks[column].first);
            grid->addWidget(button, row, static_cast<int>(column) + 1, Qt::AlignLeft);
        }
        ++row;
    }
    gallery.Save(QStringLiteral("buttons"), panel);
}
