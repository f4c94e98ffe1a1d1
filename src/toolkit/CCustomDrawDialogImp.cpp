#include "toolkit/CCustomDrawDialogImp.h"

#include "toolkit/CMemoryDC.h"
#include "toolkit/PrivateMessageEvent.h"
#include "toolkit/QuillgateGUIRes.h"
#include "toolkit/ResourceStore.h"
#include "toolkit/RoundRectRegion.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <stdexcept>

namespace {
constexpr int CaptionTextLimit = 260;
} // namespace

CCustomDrawDialogImp::CCustomDrawDialogImp(Flags flags, QWidget* parent)
    : QDialog(parent), m_flags(flags),
      m_captionFont(QuillgateGUIRes::MakeFont(16, 900, false, 4, QuillgateGUIRes::DialogFace())),
      m_state(flags.closeButton, flags.helpButton) {
    setMouseTracking(true);
}

CCustomDrawDialogImp::~CCustomDrawDialogImp() = default;

const std::array<std::uint16_t, 11>& CCustomDrawDialogImp::DialogBitmapIds() {
    static const std::array<std::uint16_t, 11> ids{285, 284, 286, 283, 281, 279,
                                                   280, 282, 287, 288, 289};
    return ids;
}

void CCustomDrawDialogImp::LoadBitmaps(std::initializer_list<std::uint16_t> ids) {
    if (m_flags.helpButton && ids.size() < DialogFrameLayout::BitmapCount)
        throw std::runtime_error("Not enough arguments for LoadBitmaps");
    std::size_t index = 0;
    for (const std::uint16_t id : ids) {
        if (index >= m_bitmaps.size())
            break;
        m_bitmaps[index++] = id != 0 ? ResourceStore::Bitmap(id) : QPixmap();
    }
    for (; index < m_bitmaps.size(); ++index)
        m_bitmaps[index] = QPixmap();

    const auto size = [this](int bitmap) {
        const QPixmap& pixmap = m_bitmaps[static_cast<std::size_t>(bitmap)];
        return pixmap.isNull() ? QSize(0, 0) : pixmap.deviceIndependentSize().toSize();
    };
    m_nCaptionHeight = size(DialogFrameLayout::CaptionTile).height();
    m_nBottomHeight = size(DialogFrameLayout::BottomEdge).height();
    m_nBorderWidth = size(DialogFrameLayout::LeftEdge).width();
    m_state.SetCaptionHeight(m_nCaptionHeight);
    setContentsMargins(m_nBorderWidth, m_nCaptionHeight, m_nBorderWidth, m_nBottomHeight);
    UpdateButtonRects();
    update();
}

void CCustomDrawDialogImp::SetUpFrame(QRect& rc) {
    if (!m_bFirstTime)
        return;
    m_bFirstTime = false;

    const bool wasVisible = isVisible();
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    rc.adjust(0, -(m_nCaptionHeight - SystemCaptionHeight - SystemFrameHeight), 0, m_nBottomHeight);
    setGeometry(rc);
    setMask(RoundRectRegion::Make(rc.size(), QSize(CornerEllipse, CornerEllipse)));
    if (wasVisible)
        show();
}

void CCustomDrawDialogImp::SetUpFrame() {
    QRect rc = geometry();
    SetUpFrame(rc);
}

DialogFrameLayout::Frame CCustomDrawDialogImp::CurrentFrame() const {
    DialogFrameLayout::Sizes sizes;
    for (std::size_t i = 0; i < m_bitmaps.size(); ++i)
        sizes[i] =
            m_bitmaps[i].isNull() ? QSize(0, 0) : m_bitmaps[i].deviceIndependentSize().toSize();
    const DialogFrameLayout::Pointer pointer{m_state.Over(), m_state.Hit(), m_state.Down(),
                                             m_state.DownHit()};
    return DialogFrameLayout::Layout(size(), sizes, m_flags, pointer);
}

QString CCustomDrawDialogImp::CaptionText() const {
    return windowTitle().left(CaptionTextLimit);
}

void CCustomDrawDialogImp::UpdateButtonRects() {
    const auto frame = CurrentFrame();
    m_state.SetButtonRects(frame.closeRect, frame.helpRect);
}

void CCustomDrawDialogImp::DrawFrame(QPainter& painter) {
    const auto frame = CurrentFrame();
    m_state.SetButtonRects(frame.closeRect, frame.helpRect);
    const auto draw = [this](QPainter& target, const DialogFrameLayout::Placement& placement) {
        const QPixmap& pixmap = m_bitmaps[static_cast<std::size_t>(placement.bitmap)];
        if (!pixmap.isNull())
            target.drawPixmap(placement.rect.topLeft(), pixmap);
    };
    {
        // The caption is drawn over by the button and the text, so it is put together off
        // screen and copied in one piece.
        CMemoryDC memory(painter, QRect(QPoint(0, 0), frame.captionStrip), devicePixelRatioF());
        QPainter& dc = memory.dc();
        for (const auto& placement : frame.caption)
            draw(dc, placement);
        if (m_flags.captionText) {
            dc.setFont(m_captionFont);
            dc.setPen(QColor(0xFF, 0xFF, 0xFF));
            const QFontMetrics metrics(m_captionFont);
            const int y = DialogFrameLayout::CaptionTextY(m_nCaptionHeight, metrics.height());
            dc.drawText(QPoint(DialogFrameLayout::CaptionTextX, y + metrics.ascent()),
                        CaptionText());
        }
    }
    for (const auto& placement : frame.edges)
        draw(painter, placement);
}

void CCustomDrawDialogImp::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    DrawFrame(painter);
}

void CCustomDrawDialogImp::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    UpdateButtonRects();
    // A layout may still change the size after the frame was set up; the outline follows.
    if (!m_bFirstTime)
        setMask(RoundRectRegion::Make(size(), QSize(CornerEllipse, CornerEllipse)));
}

QPoint CCustomDrawDialogImp::ToClient(const QPointF& widgetPoint) const {
    return widgetPoint.toPoint() - ClientOrigin();
}

void CCustomDrawDialogImp::Apply(const DialogFrameState::Outcome& outcome) {
    if (outcome.redraw)
        update();
    switch (outcome.command) {
    case DialogFrameState::Command::Cancel:
        // Posted, as the original posts the cancel command: the dialog closes after the
        // event that caused it has been handled.
        QMetaObject::invokeMethod(
            this, [this] { OnFrameCancel(); }, Qt::QueuedConnection);
        break;
    case DialogFrameState::Command::Help:
        PrivateMessageEvent::Post(this, DialogFrameState::HelpMessage);
        break;
    case DialogFrameState::Command::None:
        break;
    }
}

void CCustomDrawDialogImp::OnFrameCancel() {
    reject();
}

void CCustomDrawDialogImp::StartMove(const QPointF& globalPoint) {
    QWindow* window = windowHandle();
    if (window != nullptr && window->startSystemMove())
        return;
    m_movingByHand = true;
    m_moveOffset = globalPoint.toPoint() - frameGeometry().topLeft();
}

void CCustomDrawDialogImp::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QDialog::mousePressEvent(event);
        return;
    }
    const int code = m_state.NcHitTest(ToClient(event->position()));
    const auto outcome = m_state.NcLButtonDown(code);
    Apply(outcome);
    if (outcome.passOn && code == DialogFrameState::HitCaption)
        StartMove(event->globalPosition());
    event->accept();
}

void CCustomDrawDialogImp::mouseMoveEvent(QMouseEvent* event) {
    if (m_movingByHand) {
        if (event->buttons() & Qt::LeftButton) {
            move(event->globalPosition().toPoint() - m_moveOffset);
            event->accept();
            return;
        }
        m_movingByHand = false;
    }
    const QPoint client = ToClient(event->position());
    if (m_state.Captured()) {
        Apply(m_state.MouseMove(client, event->buttons() == Qt::LeftButton));
    } else {
        const int code = m_state.NcHitTest(client);
        Apply(m_state.NcMouseMove(code));
    }
    event->accept();
}

void CCustomDrawDialogImp::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QDialog::mouseReleaseEvent(event);
        return;
    }
    m_movingByHand = false;
    const QPoint client = ToClient(event->position());
    if (m_state.Captured()) {
        Apply(m_state.LButtonUp(client));
    } else {
        const int code = m_state.NcHitTest(client);
        Apply(m_state.NcLButtonUp(code));
    }
    event->accept();
}

void CCustomDrawDialogImp::leaveEvent(QEvent* event) {
    // The pointer left the window: no button stays lit. (The original got no message
    // here and could leave the close button lit until the pointer came back.)
    if (!m_state.Captured())
        Apply(m_state.NcMouseMove(0));
    QDialog::leaveEvent(event);
}

void CCustomDrawDialogImp::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowTitleChange)
        update(QRect(0, 0, width(), m_nCaptionHeight));
    QDialog::changeEvent(event);
}
