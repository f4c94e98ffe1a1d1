#include "toolkit/CLabel.h"

#include "foundation/PathFunctions.h"
#include "foundation/stdstr.h"
#include "toolkit/CMemoryDC.h"
#include "toolkit/ColorRef.h"
#include "toolkit/DialogControl.h"
#include "toolkit/DpiFontRule.h"
#include "toolkit/LabelTextFlags.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTimerEvent>

#include <cmath>

namespace {

constexpr int FaceNameLimit = 32;

bool OpenWithDesktop(const stdstr& target) {
    return ShellOpen(target, stdstr(), false, nullptr, nullptr);
}

QString ForDrawing(const QString& text) {
    QString out = text;
    out.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return out;
}

} // namespace

CLabel::CLabel(QWidget* parent, std::uint32_t style)
    : QWidget(parent), m_crText(palette().color(QPalette::WindowText)),
      m_defaultBrush(palette().color(QPalette::Window)), m_font(font()), m_style(style),
      m_opener(OpenWithDesktop) {
    setAttribute(Qt::WA_OpaquePaintEvent, true);
}

CLabel::~CLabel() = default;

void CLabel::Redraw() {
    // Painted at once. The original also had the parent repaint the label's place so that a
    // transparent label shows what lies under it now; Qt paints the parent's part under a
    // widget that is not opaque as part of the widget's own repaint.
    repaint();
}

void CLabel::UpdateOpaqueness() {
    // A transparent label leaves its background to the parent; so does a gradient in its
    // last row, which the bands leave out: the parent's background shows there rather than
    // whatever the window held before.
    setAttribute(Qt::WA_OpaquePaintEvent, !m_bTransparent && !m_bGradient);
}

void CLabel::SyncTimer() {
    if (m_blink.TimerRunning())
        m_timer.start(LabelBlink::PeriodMs, this);
    else
        m_timer.stop();
}

void CLabel::UpdateFrame() {
    // Each edge style takes one pixel on every side, as a frame around the client would.
    const int edge = ((m_exStyle & WS_EX_STATICEDGE) ? 1 : 0) + ((m_exStyle & WS_BORDER) ? 1 : 0);
    setContentsMargins(edge, edge, edge, edge);
    update();
}

void CLabel::SetStyle(std::uint32_t style) {
    m_style = style;
    update();
}

CLabel& CLabel::SetBkColor(std::uint32_t crStart, std::uint32_t crEnd, bool gradient) {
    m_crGradientStart = ColorRef::ToQColor(crStart);
    m_crGradientEnd = ColorRef::ToQColor(crEnd);
    m_bGradient = gradient;
    m_userBrush.reset();
    if (!gradient)
        m_userBrush = ColorRef::ToQColor(crStart);
    UpdateOpaqueness();
    Redraw();
    return *this;
}

CLabel& CLabel::SetTextColor(std::uint32_t cr) {
    m_crText = ColorRef::ToQColor(cr);
    Redraw();
    return *this;
}

CLabel& CLabel::SetText(const QString& text) {
    m_text = text;
    setAccessibleName(text);
    Redraw();
    return *this;
}

CLabel& CLabel::SetText(const stdstr& text) {
    return SetText(QString::fromStdU16String(text));
}

CLabel& CLabel::SetSuffix(const QString& text, std::uint32_t cr, int gap) {
    m_suffix = text;
    m_crSuffix = ColorRef::ToQColor(cr);
    m_nSuffixGap = gap;
    Redraw();
    return *this;
}

CLabel& CLabel::SetFontBold(bool bold) {
    m_font.setWeight(bold ? QFont::Bold : QFont::Normal);
    Redraw();
    return *this;
}

CLabel& CLabel::SetFontName(const QString& name, int charset) {
    m_font.setFamily(name.left(FaceNameLimit));
    m_charset = charset;
    Redraw();
    return *this;
}

CLabel& CLabel::SetFontUnderline(bool on) {
    m_font.setUnderline(on);
    Redraw();
    return *this;
}

CLabel& CLabel::SetFontItalic(bool on) {
    m_font.setItalic(on);
    Redraw();
    return *this;
}

CLabel& CLabel::SetFontSize(int points) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int dpiY = screen != nullptr
                         ? static_cast<int>(std::lround(screen->logicalDotsPerInchY()))
                         : DpiFontRule::NormalDpi;
    const int height = DpiFontRule::LogicalHeight(points, dpiY);
    if (height < 0)
        m_font.setPixelSize(-height);
    Redraw();
    return *this;
}

CLabel& CLabel::SetSunken(bool on) {
    m_exStyle = on ? (m_exStyle | WS_EX_STATICEDGE) : (m_exStyle & ~WS_EX_STATICEDGE);
    UpdateFrame();
    return *this;
}

CLabel& CLabel::SetBorder(bool on) {
    m_exStyle = on ? (m_exStyle | WS_BORDER) : (m_exStyle & ~WS_BORDER);
    UpdateFrame();
    return *this;
}

CLabel& CLabel::SetTransparent(bool on, bool redraw) {
    m_bTransparent = on;
    m_exStyle = on ? (m_exStyle | WS_EX_TRANSPARENT) : (m_exStyle & ~WS_EX_TRANSPARENT);
    UpdateOpaqueness();
    if (redraw)
        Redraw();
    return *this;
}

CLabel& CLabel::FlashText(bool on) {
    m_blink.FlashText(on);
    SyncTimer();
    return *this;
}

CLabel& CLabel::FlashBackground(bool on) {
    m_blink.FlashBackground(on);
    SyncTimer();
    return *this;
}

CLabel& CLabel::SetLink(bool on, bool notify) {
    m_bLink = on;
    m_bNotify = notify;
    m_style = on ? (m_style | LabelTextFlags::SS_NOTIFY) : (m_style & ~LabelTextFlags::SS_NOTIFY);
    return *this;
}

CLabel& CLabel::SetLinkCursor() {
    m_bLinkCursor = true;
    setCursor(Qt::PointingHandCursor);
    return *this;
}

CLabel& CLabel::Set3DText(bool on, bool sunken) {
    m_b3D = on;
    m_b3DSunken = sunken;
    Redraw();
    return *this;
}

CLabel& CLabel::SetRotationAngle(int degrees, bool on) {
    m_rotation = degrees;
    m_bRotated = on;
    Redraw();
    return *this;
}

CLabel& CLabel::Set3DColor(std::uint32_t cr) {
    m_cr3D = ColorRef::ToQColor(cr);
    Redraw();
    return *this;
}

LabelPaintPlan::Look CLabel::CurrentLook() const {
    LabelPaintPlan::Look look;
    look.style = m_style;
    look.text = m_crText;
    look.threeD = m_cr3D;
    look.defaultBrush = m_defaultBrush;
    look.userBrush = m_userBrush;
    look.transparent = m_bTransparent;
    look.threeDText = m_b3D;
    look.threeDSunken = m_b3DSunken;
    look.rotated = m_bRotated;
    look.textHidden = m_blink.TextHidden();
    look.gradient = m_bGradient;
    look.gradientStart = m_crGradientStart;
    look.gradientEnd = m_crGradientEnd;
    look.suffix = m_suffix;
    look.suffixColour = m_crSuffix;
    look.suffixGap = m_nSuffixGap;
    return look;
}

LabelPaintPlan CLabel::CurrentPlan() const {
    const QString text = m_text.left(LabelPaintPlan::TextLimit);
    const int width = QFontMetrics(m_font).horizontalAdvance(ForDrawing(text));
    return LabelPaintPlan::Make(CurrentLook(), contentsRect(), text, width);
}

void CLabel::DrawPlan(QPainter& painter, const LabelPaintPlan& plan) const {
    for (const auto& band : plan.bands)
        painter.fillRect(band.rect, band.colour);
    if (plan.fill.has_value())
        painter.fillRect(contentsRect(), *plan.fill);

    painter.setFont(m_font);
    const int flags = LabelTextFlags::ToQt(plan.flags);
    bool first = true;
    for (const auto& run : plan.runs) {
        painter.setPen(run.colour);
        if (plan.rotated && first) {
            // The baseline starts at the centre and turns counter-clockwise, as an
            // escapement in tenths of a degree does.
            painter.save();
            painter.translate(plan.rotatedOrigin);
            painter.rotate(-m_rotation);
            painter.drawText(QPoint(0, 0), ForDrawing(run.text));
            painter.restore();
        } else {
            painter.drawText(run.rect, flags, ForDrawing(run.text));
        }
        first = false;
    }
}

void CLabel::paintEvent(QPaintEvent* /*event*/) {
    ++m_paintCount;
    QPainter painter(this);
    const LabelPaintPlan plan = CurrentPlan();
    if (plan.offscreen) {
        CMemoryDC memory(painter, rect(), devicePixelRatioF());
        DrawPlan(memory.dc(), plan);
    } else {
        DrawPlan(painter, plan);
    }
    // The edges that the sunken and border styles give.
    if (m_exStyle & (WS_EX_STATICEDGE | WS_BORDER)) {
        QRect edge = rect().adjusted(0, 0, -1, -1);
        if (m_exStyle & WS_BORDER) {
            painter.setPen(Qt::black);
            painter.drawRect(edge);
            edge.adjust(1, 1, -1, -1);
        }
        if (m_exStyle & WS_EX_STATICEDGE) {
            painter.setPen(palette().color(QPalette::Dark));
            painter.drawLine(edge.topLeft(), edge.topRight());
            painter.drawLine(edge.topLeft(), edge.bottomLeft());
            painter.setPen(palette().color(QPalette::Light));
            painter.drawLine(edge.bottomLeft(), edge.bottomRight());
            painter.drawLine(edge.topRight(), edge.bottomRight());
        }
    }
}

void CLabel::mousePressEvent(QMouseEvent* event) {
    // Without SS_NOTIFY a static control never sees the click.
    if (!(m_style & LabelTextFlags::SS_NOTIFY) || event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    event->accept();
    if (m_bNotify) {
        emit notified(DialogControl::Id(this), ClickNotifyCode);
        return;
    }
    if (m_opener)
        m_opener(stdstr(m_text.left(LabelPaintPlan::TextLimit).toStdU16String()));
}

void CLabel::OnBlinkTimer() {
    m_blink.Tick();
    Redraw();
}

void CLabel::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_timer.timerId()) {
        OnBlinkTimer();
        return;
    }
    QWidget::timerEvent(event);
}

void CLabel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        // The system colours changed: the default background follows.
        m_defaultBrush = palette().color(QPalette::Window);
        Redraw();
    }
    QWidget::changeEvent(event);
}
