#pragma once
// The program's label: its own colours, font, gradient, blinking, 3D text, rotation and
// link behaviour. Every setter returns the label, so calls chain. The paint rules live in
// LabelPaintPlan, the blinking in LabelBlink; this widget keeps the settings, draws the
// plan and handles the click.
//
// Colours are given as 0x00BBGGRR (see ColorRef), as the program's tables give them.

#include "toolkit/LabelBlink.h"
#include "toolkit/LabelPaintPlan.h"

#include <QBasicTimer>
#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <optional>

// Kept out of this header: moc cannot parse the standard headers that stdstr brings in.
class stdstr;

class CLabel : public QWidget {
    Q_OBJECT

public:
    // The code of the notice that a click sends when the label notifies.
    static constexpr int ClickNotifyCode = 0x8200;
    // Extended styles that the setters switch.
    static constexpr std::uint32_t WS_BORDER = 0x00800000;
    static constexpr std::uint32_t WS_EX_TRANSPARENT = 0x00000020;
    static constexpr std::uint32_t WS_EX_STATICEDGE = 0x00020000;

    // What a click on a link does with the label's text; by default the desktop opens it.
    using Opener = std::function<bool(const stdstr& target)>;

    // `style` is the static control's style (SS_*), as the dialog gives it.
    explicit CLabel(QWidget* parent = nullptr, std::uint32_t style = 0);
    ~CLabel() override;

    CLabel& SetBkColor(std::uint32_t crStart, std::uint32_t crEnd = 0, bool gradient = false);
    CLabel& SetTextColor(std::uint32_t cr);
    CLabel& SetText(const QString& text);
    CLabel& SetText(const stdstr& text);
    CLabel& SetSuffix(const QString& text, std::uint32_t cr, int gap);
    CLabel& SetFontBold(bool bold);
    // The face (at most 32 characters) and the character set, which is kept but has no
    // effect here: font matching covers the script.
    CLabel& SetFontName(const QString& name, int charset = 1);
    CLabel& SetFontUnderline(bool on);
    CLabel& SetFontItalic(bool on);
    CLabel& SetFontSize(int points);
    CLabel& SetSunken(bool on);
    CLabel& SetBorder(bool on);
    CLabel& SetTransparent(bool on, bool redraw = true);
    CLabel& FlashText(bool on);
    // Nothing in the program blinks a background; kept for its effect on the timer.
    CLabel& FlashBackground(bool on);
    CLabel& SetLink(bool on, bool notify);
    CLabel& SetLinkCursor();
    CLabel& Set3DText(bool on, bool sunken);
    CLabel& SetRotationAngle(int degrees, bool on);
    CLabel& Set3DColor(std::uint32_t cr);

    // The static style and the extended style bits that the setters keep.
    std::uint32_t Style() const { return m_style; }
    std::uint32_t ExStyle() const { return m_exStyle; }
    void SetStyle(std::uint32_t style);

    const QString& Text() const { return m_text; }
    const QFont& LabelFont() const { return m_font; }
    const LabelBlink& Blink() const { return m_blink; }
    bool IsTransparent() const { return m_bTransparent; }
    bool IsLink() const { return m_bLink; }
    bool Notifies() const { return m_bNotify; }
    bool HasLinkCursor() const { return m_bLinkCursor; }
    int RotationAngle() const { return m_rotation; }
    int CharSet() const { return m_charset; }
    // What the next paint would draw.
    LabelPaintPlan CurrentPlan() const;
    // How many times the label has painted itself (for tests of when it redraws).
    int PaintCount() const { return m_paintCount; }

    // The blink timer's work: flip the phase and redraw. Called by the timer; tests call it
    // directly instead of waiting.
    void OnBlinkTimer();
    bool BlinkTimerActive() const { return m_timer.isActive(); }

    void SetOpener(Opener opener) { m_opener = std::move(opener); }

signals:
    // A click on a label that notifies: the label's control number and ClickNotifyCode.
    void notified(int controlId, int code);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Redraw();
    void SyncTimer();
    void UpdateOpaqueness();
    void UpdateFrame();
    LabelPaintPlan::Look CurrentLook() const;
    void DrawPlan(QPainter& painter, const LabelPaintPlan& plan) const;

    QColor m_crText;
    QColor m_cr3D{0xFF, 0xFF, 0xFF};
    QColor m_defaultBrush;
    std::optional<QColor> m_userBrush;
    QFont m_font;
    QString m_text;
    LabelBlink m_blink;
    bool m_bLink = true;
    bool m_bTransparent = false;
    bool m_b3D = false;
    bool m_bNotify = false;
    bool m_bRotated = false;
    bool m_b3DSunken = false;
    bool m_bLinkCursor = false;
    bool m_bGradient = false;
    QColor m_crGradientStart;
    QColor m_crGradientEnd;
    QString m_suffix;
    QColor m_crSuffix;
    int m_nSuffixGap = 0;
    int m_rotation = 0;
    int m_charset = 1;
    std::uint32_t m_style;
    std::uint32_t m_exStyle = 0;
    QBasicTimer m_timer;
    Opener m_opener;
    int m_paintCount = 0;
};
