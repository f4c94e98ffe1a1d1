// Repaint cost of the main window's skin at 780 by 420 (nine pieces over a white fill,
// straight into an image and through the off-screen picture that the window paints with),
// against a plain fill of the same area in the same run, the floor.
#include "toolkit/CMemoryDC.h"
#include "toolkit/PaintBkgnd.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

const QSize WindowSize(780, 420);

// The one application of the program, on the offscreen platform, made before the first
// benchmark paints (the pixmaps of the skin need it).
void EnsureApplication() {
    static std::unique_ptr<QApplication> app = [] {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "ToolkitBench";
        static char* argv[] = {name, nullptr};
        return std::make_unique<QApplication>(argc, argv);
    }();
}

QImage Target() {
    QImage image(WindowSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    return image;
}

void BM_Floor_FillRect_780x420(benchmark::State& state) {
    EnsureApplication();
    QImage image = Target();
    const QRect rect(QPoint(0, 0), WindowSize);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(rect, Qt::white);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations() * rect.width() * rect.height());
}
BENCHMARK(BM_Floor_FillRect_780x420);

void BM_PaintBkgnd_780x420(benchmark::State& state) {
    EnsureApplication();
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 1.0);
    QImage image = Target();
    const QRect rect(QPoint(0, 0), WindowSize);
    for (auto _ : state) {
        QPainter painter(&image);
        skin.Draw(painter, rect);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations() * rect.width() * rect.height());
}
BENCHMARK(BM_PaintBkgnd_780x420);

void BM_PaintBkgnd_780x420_Offscreen(benchmark::State& state) {
    EnsureApplication();
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 1.0);
    QImage image = Target();
    const QRect rect(QPoint(0, 0), WindowSize);
    for (auto _ : state) {
        QPainter painter(&image);
        {
            CMemoryDC memory(painter, rect, 1.0);
            skin.Draw(memory.dc(), rect);
        }
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations() * rect.width() * rect.height());
}
BENCHMARK(BM_PaintBkgnd_780x420_Offscreen);

void BM_PaintBkgnd_780x420_Double(benchmark::State& state) {
    EnsureApplication();
    PaintBkgnd skin;
    skin.Load(PaintBkgnd::MainWindowIds(), 2.0);
    QImage image(WindowSize * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2.0);
    const QRect rect(QPoint(0, 0), WindowSize);
    for (auto _ : state) {
        QPainter painter(&image);
        skin.Draw(painter, rect);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations() * rect.width() * rect.height() * 4);
}
BENCHMARK(BM_PaintBkgnd_780x420_Double);

} // namespace
