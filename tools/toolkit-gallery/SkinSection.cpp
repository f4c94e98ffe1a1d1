// The main window's skin at two sizes (and the larger one drawn for a display scale of 2).

#include "Gallery.h"

#include "toolkit/COffscreenDraw.h"
#include "toolkit/PaintBkgnd.h"
#include "toolkit/RoundRectRegion.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

namespace {

// What the main window paints under its controls.
class SkinWindow : public QWidget, public COffscreenDraw<SkinWindow> {
public:
    explicit SkinWindow(QSize size) {
        OffscreenSetUp();
        setWindowFlags(Qt::FramelessWindowHint);
        resize(size);
        m_skin.Load(PaintBkgnd::MainWindowIds(), devicePixelRatioF());
        // The main window's outline is rounded on an ellipse of 26 by 26.
        setMask(RoundRectRegion::Make(size, QSize(26, 26)));
    }
    void DoPaint(QPainter& painter) { m_skin.Draw(painter, rect()); }

protected:
    void paintEvent(QPaintEvent* event) override { OffscreenPaint(event); }

private:
    PaintBkgnd m_skin;
};

} // namespace

QG_GALLERY_SECTION(Skin) {
    for (const QSize size : {QSize(780, 420), QSize(640, 480)}) {
        SkinWindow window(size);
        gallery.Save(QStringLiteral("skin-%1x%2").arg(size.width()).arg(size.height()), window);
    }

    const QSize size(780, 420);
    QImage image(size * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2.0);
    image.fill(Qt::transparent);
    {
        PaintBkgnd skin;
        skin.Load(PaintBkgnd::MainWindowIds(), 2.0);
        QPainter painter(&image);
        painter.setClipRegion(RoundRectRegion::Make(size, QSize(26, 26)));
        skin.Draw(painter, QRect(QPoint(0, 0), size));
    }
    gallery.Save(QStringLiteral("skin-780x420@2x"), image);
}
