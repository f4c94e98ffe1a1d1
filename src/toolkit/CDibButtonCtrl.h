#pragma once
// The program's clickable button: up to six state pictures with a caption drawn over them,
// and a plain click (`clicked` with the control's id) for the dialog that owns it. The
// state table lives in DibButtonState, the choice of picture in DibButtonLook and the
// caption's place in DibButtonTextLayout; this widget feeds them its events and draws.
//
// The parent also receives WM_QG_BUTTON_ENTER and WM_QG_BUTTON_LEAVE, sent as
// PrivateMessageEvent with the button in wParam, while the button has a hover picture.
// A slot of `clicked` must not delete the button at once (deleteLater is fine): the state
// goes on after the click.

#include "toolkit/DibButtonHost.h"
#include "toolkit/DibButtonLook.h"
#include "toolkit/DibButtonState.h"
#include "toolkit/DibButtonTextLayout.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QString>
#include <QWidget>

#include <array>
#include <cstdint>
#include <optional>

// Not included here: moc cannot read the C++20 headers under it.
class stdstr;

class CDibButtonCtrl : public QWidget, private DibButtonHost {
    Q_OBJECT

public:
    explicit CDibButtonCtrl(QWidget* parent = nullptr, int controlId = 0);
    ~CDibButtonCtrl() override;

    void SetControlId(int controlId) { m_controlId = controlId; }
    int ControlId() const { return m_controlId; }

    // Resource ids; 0 leaves that state without a picture. A normal picture that loads
    // gives the button its size, keeping its position.
    void SetStateBitmaps(std::uint16_t normal, std::uint16_t pressed, std::uint16_t hover,
                         std::uint16_t disabled, std::uint16_t focused,
                         std::uint16_t focusedPressed);
    // The font is copied; null means no font, and then the caption is not drawn.
    // align: -1 left at xOffset, 0 centred and moved by xOffset, otherwise right-weighted.
    void SetCaption(const stdstr& text, const QFont* font, int align, int xOffset, int pressedDx,
                    int pressedDy);
    void SetCaption(const QString& text, const QFont* font, int align, int xOffset, int pressedDx,
                    int pressedDy);
    // Text colours as 0x00BBGGRR; 0 keeps the painter's colour (black).
    void SetColors(std::uint32_t normal, std::uint32_t pressed, std::uint32_t hover,
                   std::uint32_t disabled);
    void SetClickSound(bool on, std::uint16_t soundId);
    void SetPushMode(bool pushMode);
    void SetLatched(bool latched);
    // With text: the tip shows it. Null: the tip is switched off.
    void SetToolTipText(const char16_t* text);
    void SetToolTipText(const QString& text);
    // True: takes the focus and shows itself down and checked; false: up, focus untouched.
    void SetCheckState(bool check);
    bool GetCheckState() const { return m_state.GetCheckState(); }

    // A press and release as the space bar gives them (the accessibility "press").
    void Activate();

    const DibButtonState& State() const { return m_state; }
    const QString& Caption() const { return m_caption; }
    const QString& ToolTipText() const { return m_toolTipText; }
    // The name that assistive technology reads: the caption, else the tool tip.
    QString AccessibleButtonName() const;
    // What a paint would draw now.
    DibButtonLook CurrentLook() const;
    DibButtonTextLayout CurrentTextLayout(const DibButtonLook& look) const;
    // The picture of a state record, null when the record is empty.
    QPixmap Picture(DibButtonLook::Picture which) const;
    QColor TextColour(DibButtonLook::TextColour which) const;

signals:
    void clicked(int controlId);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // DibButtonHost
    void TakeFocus() override;
    void PlayClickSound(int soundId) override;
    void SendCommand() override;
    void SendMouseEnter() override;
    void SendMouseLeave() override;
    void TrackMouseLeave() override;
    void Redraw() override;
    void RefreshToolTip() override;

    void UpdateOpaqueness();
    void NameChanged();
    static DibButtonState::Key KeyOf(int qtKey);
    bool Inside(const QPointF& point) const;

    DibButtonState m_state;
    int m_controlId;
    // Indexed by DibButtonLook::Picture.
    std::array<QPixmap, 7> m_pictures;
    QString m_caption;
    QString m_secondLine;
    QString m_suffix;
    QString m_toolTipText;
    std::optional<QFont> m_font;
    std::optional<QFont> m_secondLineFont;
    DibButtonTextLayout::Params m_textParams;
    std::uint32_t m_colorNormal = 0;
    std::uint32_t m_colorPressed = 0;
    std::uint32_t m_colorHover = 0;
    std::uint32_t m_colorDisabled = 0;
    std::uint32_t m_colorSuffix = 0;
    std::uint32_t m_colorSecondLine = 0;
    bool m_trackingLeave = false;
    // Where the last pointer event found the pointer, so that a release is always preceded
    // by a move to where it happens.
    bool m_lastInside = false;
};
