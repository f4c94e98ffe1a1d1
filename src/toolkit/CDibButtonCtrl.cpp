#include "toolkit/CDibButtonCtrl.h"

#include "foundation/stdstr.h"

#include "toolkit/ColorRef.h"
#include "toolkit/DibButtonAccessible.h"
#include "toolkit/PrivateMessageEvent.h"
#include "toolkit/PrivateMessages.h"
#include "toolkit/ResourceStore.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

std::size_t IndexOf(DibButtonLook::Picture picture) {
    return static_cast<std::size_t>(picture);
}

} // namespace

CDibButtonCtrl::CDibButtonCtrl(QWidget* parent, int controlId)
    : QWidget(parent), m_state(*this), m_controlId(controlId) {
    DibButtonAccessible::Install();
    // Hover needs every move, not only those with a button held.
    setMouseTracking(true);
    // Tab reaches the button; a click focuses it through the state table, so that a
    // frozen button does not take the focus.
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

CDibButtonCtrl::~CDibButtonCtrl() = default;

void CDibButtonCtrl::SetStateBitmaps(std::uint16_t normal, std::uint16_t pressed,
                                     std::uint16_t hover, std::uint16_t disabled,
                                     std::uint16_t focused, std::uint16_t focusedPressed) {
    using P = DibButtonLook::Picture;
    const auto load = [](std::uint16_t id) {
        return id != 0 ? ResourceStore::Bitmap(id) : QPixmap();
    };
    m_pictures[IndexOf(P::Normal)] = load(normal);
    m_pictures[IndexOf(P::Pressed)] = load(pressed);
    m_pictures[IndexOf(P::Hover)] = load(hover);
    m_pictures[IndexOf(P::Disabled)] = load(disabled);
    m_pictures[IndexOf(P::Focused)] = load(focused);
    m_pictures[IndexOf(P::FocusedPressed)] = load(focusedPressed);
    m_state.SetHasHover(!m_pictures[IndexOf(P::Hover)].isNull());

    const QPixmap& normalPicture = m_pictures[IndexOf(P::Normal)];
    if (!normalPicture.isNull())
        resize(normalPicture.deviceIndependentSize().toSize());
    UpdateOpaqueness();
    update();
}

void CDibButtonCtrl::SetCaption(const stdstr& text, const QFont* font, int align, int xOffset,
                                int pressedDx, int pressedDy) {
    SetCaption(QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())), font, align,
               xOffset, pressedDx, pressedDy);
}

void CDibButtonCtrl::SetCaption(const QString& text, const QFont* font, int align, int xOffset,
                                int pressedDx, int pressedDy) {
    m_caption = text;
    m_font = font != nullptr ? std::optional<QFont>(*font) : std::nullopt;
    m_textParams.align = align;
    m_textParams.xOffset = xOffset;
    m_textParams.pressedDx = pressedDx;
    m_textParams.pressedDy = pressedDy;
    NameChanged();
    update();
}

void CDibButtonCtrl::SetColors(std::uint32_t normal, std::uint32_t pressed, std::uint32_t hover,
                               std::uint32_t disabled) {
    m_colorNormal = normal;
    m_colorPressed = pressed;
    m_colorHover = hover;
    m_colorDisabled = disabled;
    update();
}

void CDibButtonCtrl::SetClickSound(bool on, std::uint16_t soundId) {
    m_state.SetClickSound(on, soundId);
}

void CDibButtonCtrl::SetPushMode(bool pushMode) {
    m_state.SetPushMode(pushMode);
}

void CDibButtonCtrl::SetLatched(bool latched) {
    m_state.SetLatched(latched);
}

void CDibButtonCtrl::SetToolTipText(const char16_t* text) {
    SetToolTipText(text != nullptr ? QString::fromUtf16(text) : QString());
}

void CDibButtonCtrl::SetToolTipText(const QString& text) {
    // A null text switches the tip off; an empty one keeps it on with nothing to show.
    m_toolTipText = text.isNull() ? QString() : text;
    setToolTip(m_toolTipText);
    NameChanged();
}

void CDibButtonCtrl::SetCheckState(bool check) {
    m_state.SetCheckState(check);
}

void CDibButtonCtrl::Activate() {
    if (!isEnabled())
        return;
    if (m_state.OnKeyDown(DibButtonState::Key::Space))
        m_state.OnKeyUp(DibButtonState::Key::Space);
}

QString CDibButtonCtrl::AccessibleButtonName() const {
    return m_caption.isEmpty() ? m_toolTipText : m_caption;
}

DibButtonLook CDibButtonCtrl::CurrentLook() const {
    using P = DibButtonLook::Picture;
    DibButtonLook::Pictures pictures;
    pictures.normal = !m_pictures[IndexOf(P::Normal)].isNull();
    pictures.pressed = !m_pictures[IndexOf(P::Pressed)].isNull();
    pictures.focusedPressed = !m_pictures[IndexOf(P::FocusedPressed)].isNull();
    pictures.hover = !m_pictures[IndexOf(P::Hover)].isNull();
    pictures.disabled = !m_pictures[IndexOf(P::Disabled)].isNull();
    pictures.focused = !m_pictures[IndexOf(P::Focused)].isNull();
    DibButtonLook::Input input;
    input.disabled = !isEnabled();
    input.pressed = m_state.Pressed();
    input.focused = m_state.Focused();
    input.hot = m_state.Hot();
    return DibButtonLook::Choose(pictures, input);
}

DibButtonTextLayout CDibButtonCtrl::CurrentTextLayout(const DibButtonLook& look) const {
    DibButtonTextLayout::Metrics metrics;
    const QSizeF bitmapSize =
        m_pictures[IndexOf(DibButtonLook::Picture::Normal)].deviceIndependentSize();
    metrics.bitmapWidth = qRound(bitmapSize.width());
    metrics.bitmapHeight = qRound(bitmapSize.height());
    if (m_font) {
        const QFontMetrics fm(*m_font, this);
        metrics.lineWidth = fm.horizontalAdvance(m_caption + m_suffix);
        metrics.lineHeight = fm.height();
        metrics.captionWidth = fm.horizontalAdvance(m_caption);
    }
    if (!m_secondLine.isEmpty()) {
        const QFontMetrics fm(m_secondLineFont.value_or(font()), this);
        metrics.hasSecondLine = true;
        metrics.secondWidth = fm.horizontalAdvance(m_secondLine);
        metrics.secondHeight = fm.height();
    }
    return DibButtonTextLayout::Place(m_textParams, metrics, look);
}

QPixmap CDibButtonCtrl::Picture(DibButtonLook::Picture which) const {
    return m_pictures[IndexOf(which)];
}

QColor CDibButtonCtrl::TextColour(DibButtonLook::TextColour which) const {
    switch (which) {
    case DibButtonLook::TextColour::Pressed:
        return ColorRef::ToQColor(m_colorPressed);
    case DibButtonLook::TextColour::Hover:
        return ColorRef::ToQColor(m_colorHover);
    case DibButtonLook::TextColour::Disabled:
        return ColorRef::ToQColor(m_colorDisabled);
    case DibButtonLook::TextColour::Normal:
        break;
    }
    return ColorRef::ToQColor(m_colorNormal);
}

void CDibButtonCtrl::paintEvent(QPaintEvent*) {
    const DibButtonLook look = CurrentLook();
    if (look.picture == DibButtonLook::Picture::None)
        return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_pictures[IndexOf(look.picture)]);
    if (m_caption.isEmpty() || !m_font)
        return;

    const DibButtonTextLayout layout = CurrentTextLayout(look);
    // A colour of 0 leaves the pen as it is, so black is the default.
    const auto setColour = [&painter](std::uint32_t colorRef) {
        if (colorRef != 0)
            painter.setPen(ColorRef::ToQColor(colorRef));
    };
    std::uint32_t colour = m_colorNormal;
    if (look.colour == DibButtonLook::TextColour::Pressed)
        colour = m_colorPressed;
    else if (look.colour == DibButtonLook::TextColour::Hover)
        colour = m_colorHover;
    else if (look.colour == DibButtonLook::TextColour::Disabled)
        colour = m_colorDisabled;

    painter.setFont(*m_font);
    setColour(colour);
    const int ascent = painter.fontMetrics().ascent();
    painter.drawText(layout.x, layout.y + ascent, m_caption);
    if (!m_suffix.isEmpty()) {
        setColour(m_colorSuffix);
        painter.drawText(layout.suffixX, layout.y + ascent, m_suffix);
    }
    if (!m_secondLine.isEmpty()) {
        painter.setFont(m_secondLineFont.value_or(font()));
        setColour(m_colorSecondLine);
        painter.drawText(layout.secondX, layout.secondY + painter.fontMetrics().ascent(),
                         m_secondLine);
    }
}

bool CDibButtonCtrl::Inside(const QPointF& point) const {
    return rect().contains(point.toPoint());
}

void CDibButtonCtrl::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_lastInside = Inside(event->position());
    m_state.OnMouseDown();
    event->accept();
}

void CDibButtonCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseDoubleClickEvent(event);
        return;
    }
    m_lastInside = Inside(event->position());
    m_state.OnMouseDoubleClick();
    event->accept();
}

void CDibButtonCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const bool inside = Inside(event->position());
    // The pointer is always reported where a release happens before the release itself;
    // Qt may deliver the release alone.
    if (inside != m_lastInside) {
        m_state.OnMouseMove(inside);
        m_lastInside = inside;
    }
    m_state.OnMouseUp(inside);
    event->accept();
}

void CDibButtonCtrl::mouseMoveEvent(QMouseEvent* event) {
    m_lastInside = Inside(event->position());
    m_state.OnMouseMove(m_lastInside);
    event->accept();
}

void CDibButtonCtrl::leaveEvent(QEvent* event) {
    if (m_trackingLeave) {
        m_trackingLeave = false;
        m_state.OnMouseLeave();
    }
    QWidget::leaveEvent(event);
}

void CDibButtonCtrl::focusInEvent(QFocusEvent* event) {
    m_state.OnFocusIn();
    QWidget::focusInEvent(event);
}

void CDibButtonCtrl::focusOutEvent(QFocusEvent* event) {
    m_state.OnFocusOut();
    QWidget::focusOutEvent(event);
}

DibButtonState::Key CDibButtonCtrl::KeyOf(int qtKey) {
    switch (qtKey) {
    case Qt::Key_Space:
        return DibButtonState::Key::Space;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return DibButtonState::Key::Return;
    default:
        return DibButtonState::Key::Other;
    }
}

// Keys other than space and Return always go on to the dialog, even from a frozen button:
// the dialog (Escape, its default button, shortcuts) sees them before the button does on
// the platform this behaviour comes from.
void CDibButtonCtrl::keyPressEvent(QKeyEvent* event) {
    const DibButtonState::Key key = KeyOf(event->key());
    // A held key repeats the press, which the state takes as often as it comes.
    m_state.OnKeyDown(key);
    if (key != DibButtonState::Key::Other)
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

void CDibButtonCtrl::keyReleaseEvent(QKeyEvent* event) {
    const DibButtonState::Key key = KeyOf(event->key());
    // Qt pairs each repeated press with a release; only the last one is the key going up.
    if (!event->isAutoRepeat())
        m_state.OnKeyUp(key);
    if (key != DibButtonState::Key::Other)
        event->accept();
    else
        QWidget::keyReleaseEvent(event);
}

void CDibButtonCtrl::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        // A disabled widget gets no release, so a capture it held ends here.
        if (!isEnabled())
            m_state.OnCaptureLost();
        m_state.OnEnableChanged();
    }
    QWidget::changeEvent(event);
}

void CDibButtonCtrl::hideEvent(QHideEvent* event) {
    m_state.OnCaptureLost();
    QWidget::hideEvent(event);
}

void CDibButtonCtrl::TakeFocus() {
    setFocus(Qt::OtherFocusReason);
}

void CDibButtonCtrl::PlayClickSound(int soundId) {
    ResourceStore::PlaySound(soundId);
}

void CDibButtonCtrl::SendCommand() {
    emit clicked(m_controlId);
}

void CDibButtonCtrl::SendMouseEnter() {
    PrivateMessageEvent::Send(parentWidget(), WM_QG_BUTTON_ENTER,
                              PrivateMessageEvent::Handle(this));
}

void CDibButtonCtrl::SendMouseLeave() {
    PrivateMessageEvent::Send(parentWidget(), WM_QG_BUTTON_LEAVE,
                              PrivateMessageEvent::Handle(this));
}

void CDibButtonCtrl::TrackMouseLeave() {
    m_trackingLeave = true;
}

void CDibButtonCtrl::Redraw() {
    repaint();
}

void CDibButtonCtrl::RefreshToolTip() {
    if (!m_toolTipText.isEmpty())
        setToolTip(m_toolTipText);
}

// The pictures cover the whole button when they are opaque and the button has their size;
// only then may Qt skip painting what lies behind on each hover change.
void CDibButtonCtrl::UpdateOpaqueness() {
    const QPixmap& normal = m_pictures[IndexOf(DibButtonLook::Picture::Normal)];
    bool covers = !normal.isNull() && normal.deviceIndependentSize().toSize() == size();
    for (const QPixmap& picture : m_pictures)
        covers = covers && (picture.isNull() || !picture.hasAlphaChannel());
    setAttribute(Qt::WA_OpaquePaintEvent, covers);
}

void CDibButtonCtrl::resizeEvent(QResizeEvent* event) {
    UpdateOpaqueness();
    QWidget::resizeEvent(event);
}

void CDibButtonCtrl::NameChanged() {
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}
