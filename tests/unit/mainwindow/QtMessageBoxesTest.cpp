// The Qt message boxes: text, caption, buttons and the answer, with the box answered by
// the test as soon as it is up.

#include "mainwindow/QtMessageBoxes.h"

#include "MainWindowTestApp.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

// Waits, inside the box's own loop, for the box to come up, hands it to `inspect` and
// clicks its button `button`.
void AnswerNextBox(QMessageBox::StandardButton button, std::function<void(QMessageBox&)> inspect) {
    auto* timer = new QTimer(&MainWindowTestApp());
    QObject::connect(timer, &QTimer::timeout, timer, [timer, button, inspect] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        timer->stop();
        timer->deleteLater();
        inspect(*box);
        box->button(button)->click();
    });
    timer->start(5);
}

TEST(QtMessageBoxes, YesNoBoxShowsTextAndCaptionAndAnswersNo) {
    MainWindowTestApp();
    QString text;
    QString caption;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    AnswerNextBox(QMessageBox::No, [&](QMessageBox& box) {
        text = box.text();
        caption = box.windowTitle();
        icon = box.icon();
    });

    QtMessageBoxes boxes;
    const int answer = boxes.MessageBox(nullptr, u"Turn filtering off?", u"Quillgate",
                                        IMessageBoxes::MB_YESNO | IMessageBoxes::MB_ICONQUESTION);

    EXPECT_EQ(answer, IMessageBoxes::IDNO);
    EXPECT_EQ(text, QStringLiteral("Turn filtering off?"));
    EXPECT_EQ(caption, QStringLiteral("Quillgate"));
    EXPECT_EQ(icon, QMessageBox::Question);
}

TEST(QtMessageBoxes, PlainBoxAnswersOkAndShowsKeyedTextAsItStands) {
    MainWindowTestApp();
    QString text;
    Qt::TextFormat format = Qt::AutoText;
    AnswerNextBox(QMessageBox::Ok, [&](QMessageBox& box) {
        text = box.text();
        format = box.textFormat();
    });

    QtMessageBoxes boxes;
    const int answer = boxes.MessageBox(nullptr, u"LoadDll##libQGPlugin_d.so##<b>x</b>", u"",
                                        IMessageBoxes::MB_OK);

    EXPECT_EQ(answer, IMessageBoxes::IDOK);
    EXPECT_EQ(text, QStringLiteral("LoadDll##libQGPlugin_d.so##<b>x</b>"));
    EXPECT_EQ(format, Qt::PlainText);
}

TEST(QtMessageBoxes, HandIconIsShownAsCritical) {
    MainWindowTestApp();
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    AnswerNextBox(QMessageBox::Ok, [&](QMessageBox& box) { icon = box.icon(); });

    QtMessageBoxes boxes;
    boxes.MessageBox(nullptr, u"Quillgate cannot start", u"Quillgate", IMessageBoxes::MB_ICONHAND);

    EXPECT_EQ(icon, QMessageBox::Critical);
}

} // namespace
