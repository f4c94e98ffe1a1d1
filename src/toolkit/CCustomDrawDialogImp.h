#pragma once
// The base of the program's framed dialogs (About box, close warning, summary pop-up): no
// system frame, a rounded outline, a caption drawn from bitmaps with the title in white,
// a close button (and, if asked, a help button) of its own, and the whole dialog draggable
// by any point that is not a button. The rules of the buttons live in DialogFrameState,
// the frame's geometry in DialogFrameLayout; this widget feeds them and draws.
//
// The caption, bottom and side edges lie inside the widget: its contents margins are set
// to them, so that layouts and children use the client area only.

#include "toolkit/DialogFrameLayout.h"
#include "toolkit/DialogFrameState.h"

#include <QDialog>
#include <QFont>
#include <QPixmap>

#include <array>
#include <cstdint>
#include <initializer_list>

class CCustomDrawDialogImp : public QDialog {
    Q_OBJECT

public:
    using Flags = DialogFrameLayout::Flags;

    // The height of a system caption and frame that SetUpFrame takes away: none here,
    // since the window never had a system caption of its own.
    static constexpr int SystemCaptionHeight = 0;
    static constexpr int SystemFrameHeight = 0;
    // The corners of the outline lie on an ellipse of this size.
    static constexpr int CornerEllipse = 25;

    explicit CCustomDrawDialogImp(Flags flags, QWidget* parent = nullptr);
    ~CCustomDrawDialogImp() override;

    // Up to fourteen bitmap ids in the order of DialogFrameLayout::Bitmap; missing ids are
    // 0 (no picture). With the help button on, fewer than fourteen throw std::exception
    // "Not enough arguments for LoadBitmaps". Sets the three measures of the frame.
    void LoadBitmaps(std::initializer_list<std::uint16_t> ids);
    // The ids that the About box, the close warning and the summary pop-up use.
    static const std::array<std::uint16_t, 11>& DialogBitmapIds();

    // Once only: drops the system frame, grows `rc` (the window rectangle) by the caption
    // at the top and the bottom edge at the bottom, moves the window there and gives it its
    // rounded outline. Later calls change nothing.
    void SetUpFrame(QRect& rc);
    // The same with the window's current rectangle.
    void SetUpFrame();

    int CaptionHeight() const { return m_nCaptionHeight; }
    int BottomHeight() const { return m_nBottomHeight; }
    int BorderWidth() const { return m_nBorderWidth; }
    const DialogFrameState& FrameState() const { return m_state; }
    const Flags& FrameFlags() const { return m_flags; }
    // The frame as it would be drawn now.
    DialogFrameLayout::Frame CurrentFrame() const;
    const QFont& CaptionFont() const { return m_captionFont; }
    // Where the client area's (0, 0) lies in the widget.
    QPoint ClientOrigin() const { return QPoint(m_nBorderWidth, m_nCaptionHeight); }
    // The caption text as drawn (the title, at most 260 characters).
    QString CaptionText() const;

protected:
    // A click on the close button: the dialog's cancel command. Default: reject().
    virtual void OnFrameCancel();

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void DrawFrame(QPainter& painter);
    void Apply(const DialogFrameState::Outcome& outcome);
    QPoint ToClient(const QPointF& widgetPoint) const;
    void StartMove(const QPointF& globalPoint);
    void UpdateButtonRects();

    Flags m_flags;
    std::array<QPixmap, DialogFrameLayout::BitmapCount> m_bitmaps;
    QFont m_captionFont;
    bool m_bFirstTime = true;
    int m_nCaptionHeight = 0;
    int m_nBottomHeight = 0;
    int m_nBorderWidth = 0;
    DialogFrameState m_state;
    // Moving by hand where the window system does not move the window for us.
    bool m_movingByHand = false;
    QPoint m_moveOffset;
};
