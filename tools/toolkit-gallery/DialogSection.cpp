// A framed dialog (the base of the About box and the close warning) in its button states.

#include "Gallery.h"

#include "toolkit/CCustomDrawDialogImp.h"
#include "toolkit/CLabel.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace {

std::unique_ptr<CCustomDrawDialogImp> MakeDialog(CCustomDrawDialogImp::Flags flags,
                                                 const QString& title) {
    auto dialog = std::make_unique<CCustomDrawDialogImp>(flags);
    const auto& ids = CCustomDrawDialogImp::DialogBitmapIds();
    dialog->LoadBitmaps(
        {ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], ids[7], ids[8], ids[9], ids[10]});
    dialog->setWindowTitle(title);
    QPalette palette = dialog->palette();
    palette.setColor(QPalette::Window, Qt::white);
    dialog->setPalette(palette);

    auto* layout = new QVBoxLayout(dialog.get());
    auto* text = new CLabel(dialog.get());
    text->SetText(QStringLiteral("Quillgate keeps spam out of your mail.\r\n"
                                 "This is the client area of a framed dialog."));
    text->SetBkColor(0xFFFFFF);
    text->setMinimumHeight(60);
    layout->addWidget(text);
    layout->addStretch();

    QRect rc(100, 144, 400, 224);
    dialog->SetUpFrame(rc);
    return dialog;
}

void Hover(QWidget& widget, QPoint at, Qt::MouseButtons buttons = Qt::NoButton) {
    QMouseEvent move(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, buttons,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &move);
}

void Press(QWidget& widget, QPoint at) {
    QMouseEvent press(QEvent::MouseButtonPress, at, widget.mapToGlobal(at), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &press);
}

} // namespace

QG_GALLERY_SECTION(Dialog) {
    auto dialog = MakeDialog({true, true, false}, QStringLiteral("About Quillgate"));
    gallery.Save(QStringLiteral("dialog-about"), *dialog);
    const QPoint onClose(375, 20);
    Hover(*dialog, onClose);
    gallery.Save(QStringLiteral("dialog-about-close-hover"), *dialog);
    Press(*dialog, onClose);
    Hover(*dialog, onClose, Qt::LeftButton);
    gallery.Save(QStringLiteral("dialog-about-close-pressed"), *dialog);

    // The summary pop-up's frame: caption text, no close button.
    auto popup = MakeDialog({true, false, false}, QStringLiteral("Quillgate"));
    gallery.Save(QStringLiteral("dialog-popup"), *popup);
}
