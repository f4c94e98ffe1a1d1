// Cost of a bitmap button's repaint when the pointer comes and goes (the hover picture
// against the normal one, with a caption), against filling the same area with one colour,
// copying the picture alone, and drawing picture and caption without a widget, all
// measured in the same run.
#include "toolkit/CDibButtonCtrl.h"
#include "toolkit/ResourceStore.h"

#include <QApplication>
#include <QEnterEvent>
#include <QFont>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

QApplication& App() {
    static std::unique_ptr<QApplication> app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "ButtonBench";
        static char* argv[] = {name, nullptr};
        return std::make_unique<QApplication>(argc, argv);
    }();
    return *app;
}

// A navigation button of the main window: 122 by 31, caption at the left, hover colour.
std::unique_ptr<CDibButtonCtrl> NavigationButton() {
    auto button = std::make_unique<CDibButtonCtrl>(nullptr, 1000);
    button->SetStateBitmaps(256, 259, 260, 261, 256, 259);
    static const QFont font(QStringLiteral("DejaVu Sans"), 8, QFont::Bold);
    button->SetCaption(QStringLiteral("Status"), &font, -1, 30, 0, 0);
    button->SetColors(0, 0xFFFFFF, 9909043, 0xC0C0C0);
    button->SetPushMode(false);
    return button;
}

QImage Target() {
    QImage image(122, 31, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

void BM_Floor_FillRectOfTheButtonArea(benchmark::State& state) {
    App();
    QImage image = Target();
    const QColor colours[2] = {QColor(0xF4, 0xF6, 0xF8), QColor(0xFF, 0xFF, 0xFF)};
    int i = 0;
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(QRect(0, 0, 122, 31), colours[i ^= 1]);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Floor_FillRectOfTheButtonArea);

void BM_Floor_DrawPictureOfTheButton(benchmark::State& state) {
    App();
    QImage image = Target();
    const QPixmap pictures[2] = {ResourceStore::Bitmap(256), ResourceStore::Bitmap(260)};
    if (pictures[0].isNull() || pictures[1].isNull()) {
        state.SkipWithError("bitmaps 256 and 260 did not load");
        return;
    }
    int i = 0;
    for (auto _ : state) {
        QPainter painter(&image);
        painter.drawPixmap(0, 0, pictures[i ^= 1]);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Floor_DrawPictureOfTheButton);

// What the button's paint does at the least: the picture and its caption, straight into
// the image, without a widget.
void BM_Floor_DrawPictureAndCaption(benchmark::State& state) {
    App();
    QImage image = Target();
    const QPixmap pictures[2] = {ResourceStore::Bitmap(256), ResourceStore::Bitmap(260)};
    const QFont font(QStringLiteral("DejaVu Sans"), 8, QFont::Bold);
    const QString caption = QStringLiteral("Status");
    int i = 0;
    for (auto _ : state) {
        QPainter painter(&image);
        painter.drawPixmap(0, 0, pictures[i ^= 1]);
        painter.setFont(font);
        painter.setPen(QColor(0x33, 0x33, 0x97));
        painter.drawText(30, 8 + painter.fontMetrics().ascent(), caption);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Floor_DrawPictureAndCaption);

// One iteration is one hover change: the pointer enters (or leaves) and the button is
// painted into the image in its new state.
void BM_Button_HoverChangeRepaint(benchmark::State& state) {
    App();
    auto button = NavigationButton();
    QImage image = Target();
    const QPointF inside(60, 15);
    bool hot = false;
    for (auto _ : state) {
        if (!hot) {
            QMouseEvent move(QEvent::MouseMove, inside, button->mapToGlobal(inside), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(button.get(), &move);
        } else {
            QEvent leave(QEvent::Leave);
            QApplication::sendEvent(button.get(), &leave);
        }
        hot = !hot;
        if (button->State().Hot() != hot) {
            state.SkipWithError("the hover state did not change");
            return;
        }
        button->render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Button_HoverChangeRepaint);

} // namespace
