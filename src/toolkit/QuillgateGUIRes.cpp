#include "toolkit/QuillgateGUIRes.h"

#include "foundation/Trace.h"
#include "toolkit/ControlScaling.h"
#include "toolkit/DialogControl.h"
#include "toolkit/DpiFontRule.h"
#include "toolkit/ImageStrip.h"
#include "toolkit/ResourceStore.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <cmath>

namespace {

constexpr int AntialiasedQuality = 4;
constexpr int ProofQuality = 2;
constexpr int DefaultQuality = 0;
constexpr int IconSize = 32;      // SM_CXICON
constexpr int SmallIconSize = 16; // SM_CXSMICON

QList<QPixmap> ImageListFrom(const QPixmap& bitmap, QImage::Format depth) {
    QList<QPixmap> list;
    if (bitmap.isNull())
        return list;
    const QImage source = bitmap.toImage().convertToFormat(depth);
    for (const QImage& image : ImageStrip::Split(source, 16, 16, Qt::white))
        list.append(QPixmap::fromImage(image));
    return list;
}

} // namespace

QString QuillgateGUIRes::DialogFace() {
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

QFont QuillgateGUIRes::MakeFont(int height, int weight, bool underline, int quality,
                                const QString& face) {
    QFont font(face);
    font.setStyleHint(QFont::SansSerif, quality == AntialiasedQuality ? QFont::PreferAntialias
                                                                      : QFont::PreferDefault);
    // Weight 0 lets the font mapper choose, which is the regular weight.
    font.setWeight(weight >= 900 ? QFont::Black : weight >= 700 ? QFont::Bold : QFont::Normal);
    font.setUnderline(underline);
    if (height < 0) {
        font.setPixelSize(-height);
    } else if (height > 0) {
        // A cell height: the largest character size whose ascent and descent fit in it.
        int size = height;
        font.setPixelSize(size);
        while (size > 1 && QFontMetrics(font).height() > height) {
            --size;
            font.setPixelSize(size);
        }
    }
    return font;
}

int QuillgateGUIRes::GetScreenDpi() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return DpiFontRule::NormalDpi;
    return static_cast<int>(std::lround(screen->logicalDotsPerInchX()));
}

bool QuillgateGUIRes::Create() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int dpiY = screen != nullptr
                         ? static_cast<int>(std::lround(screen->logicalDotsPerInchY()))
                         : DpiFontRule::NormalDpi;
    return Create(GetScreenDpi(), dpiY);
}

bool QuillgateGUIRes::Create(int dpiX, int dpiY) {
    TraceMsg(TRACE_DEBUG, u"GUI Resources - creating...");
    m_createdDpiX = dpiX;

    m_appIcon = ResourceStore::Icon(128);
    m_iconLarge = m_appIcon.isNull() ? QPixmap() : m_appIcon.pixmap(IconSize, IconSize);
    m_iconSmall = m_appIcon.isNull() ? QPixmap() : m_appIcon.pixmap(SmallIconSize, SmallIconSize);

    const QString face = DialogFace();
    const int height = DpiFontRule::DialogFontHeight(dpiY);
    // The order is the original's: a first regular font goes into the normal slot and is
    // replaced at the end by the regular dialog font; nothing reads it in between.
    m_fontNormal = MakeFont(14, 0, false, ProofQuality, face);
    m_fontLink = MakeFont(14, 400, true, ProofQuality, face);
    m_fontBold = MakeFont(height, 700, false, AntialiasedQuality, face);
    m_fontBold2 = MakeFont(height, 700, false, DefaultQuality, face);
    m_fontBold1 = MakeFont(height, 700, false, AntialiasedQuality, face);
    m_fontBold3 = MakeFont(height, 700, false, AntialiasedQuality, face);
    m_fontNormal = MakeFont(height, 0, false, AntialiasedQuality, face);

    m_brushWhite = QBrush(QColor(0xFF, 0xFF, 0xFF));
    m_brushNull = QBrush(Qt::NoBrush);
    m_brushGrey = QBrush(QColor(0xEE, 0xEE, 0xEE));
    m_brushCream = QBrush(QColor(240, 240, 220));

    m_bitmap254 = ResourceStore::Bitmap(254, 1.0);
    m_bitmap282 = ResourceStore::Bitmap(282, 1.0);
    m_imageList = ImageListFrom(m_bitmap254, QImage::Format_RGB888);
    m_imageList16 = ImageListFrom(m_bitmap282, QImage::Format_RGB16);

    TraceMsg(TRACE_DEBUG, u"GUI Resources - creating...done");
    return true;
}

void QuillgateGUIRes::GrowControl(QWidget* dialog, int id, int dy, int dx) {
    QWidget* control = DialogControl::Find(dialog, id);
    if (control == nullptr)
        return;
    control->setGeometry(ControlScaling::Grow(control->geometry(), dy, dx));
}

void QuillgateGUIRes::ScaleControlSize(QWidget* dialog, int id, double factor) {
    QWidget* control = DialogControl::Find(dialog, id);
    if (control == nullptr)
        return;
    control->setGeometry(ControlScaling::ScaleSize(control->geometry(), factor));
}

void QuillgateGUIRes::ScaleControlPos(QWidget* dialog, int id, double factor, bool toClient) {
    QWidget* control = DialogControl::Find(dialog, id);
    if (control == nullptr)
        return;
    const QPoint screenPos = control->mapToGlobal(QPoint(0, 0));
    control->move(ControlScaling::ScalePos(control->pos(), screenPos, factor, toClient));
}
