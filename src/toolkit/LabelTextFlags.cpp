#include "toolkit/LabelTextFlags.h"

#include <Qt>

std::uint32_t LabelTextFlags::FromStyle(std::uint32_t style, const QString& text) {
    std::uint32_t flags = 0;
    switch (style & SS_TYPEMASK) {
    case SS_CENTER:
        flags = DT_CENTER | DT_WORDBREAK;
        break;
    case SS_RIGHT:
        flags = DT_RIGHT | DT_WORDBREAK;
        break;
    case SS_LEFTNOWORDWRAP:
        flags = 0;
        break;
    default:
        flags = DT_WORDBREAK;
        break;
    }
    if (style & SS_CENTERIMAGE) {
        flags = DT_CENTER;
        if (!text.contains(QStringLiteral("\r\n")))
            flags |= DT_VCENTER | DT_SINGLELINE;
    }
    return flags;
}

int LabelTextFlags::ToQt(std::uint32_t flags) {
    int qt = 0;
    if (flags & DT_CENTER)
        qt |= Qt::AlignHCenter;
    else if (flags & DT_RIGHT)
        qt |= Qt::AlignRight;
    else
        qt |= Qt::AlignLeft;
    // Vertical placement only applies to a single line, as with the original.
    if ((flags & DT_SINGLELINE) && (flags & DT_VCENTER))
        qt |= Qt::AlignVCenter;
    else if ((flags & DT_SINGLELINE) && (flags & DT_BOTTOM))
        qt |= Qt::AlignBottom;
    else
        qt |= Qt::AlignTop;
    if (flags & DT_SINGLELINE)
        qt |= Qt::TextSingleLine;
    else if (flags & DT_WORDBREAK)
        qt |= Qt::TextWordWrap;
    return qt;
}
