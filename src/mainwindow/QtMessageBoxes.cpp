#include "mainwindow/QtMessageBoxes.h"

#include <QMessageBox>
#include <QString>

namespace {

QString ToQString(const stdstr& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QMessageBox::Icon IconOf(std::uint32_t type) {
    switch (type & IMessageBoxes::IconMask) {
    case IMessageBoxes::MB_ICONHAND:
        return QMessageBox::Critical;
    case IMessageBoxes::MB_ICONQUESTION:
        return QMessageBox::Question;
    case IMessageBoxes::MB_ICONEXCLAMATION:
        return QMessageBox::Warning;
    case IMessageBoxes::MB_ICONASTERISK:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

} // namespace

int QtMessageBoxes::MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                               std::uint32_t type) {
    QMessageBox box(IconOf(type), ToQString(caption), ToQString(text), QMessageBox::NoButton,
                    owner);
    // The texts are the program's own sentences, never markup.
    box.setTextFormat(Qt::PlainText);
    switch (type & ButtonMask) {
    case MB_YESNO:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case MB_OKCANCEL:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    default:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return IDYES;
    case QMessageBox::No:
        return IDNO;
    case QMessageBox::Cancel:
        return IDCANCEL;
    default:
        return IDOK;
    }
}
