#pragma once
// The framed dialog's caption buttons: hit-testing and what a press, a move and a release
// do. The window feeds it the pointer in client coordinates and acts on the outcome
// (redraw the frame, take or give back the pointer, start a move, close, ask for help).
//
// Two kinds of event come in, as on the original: "frame" events while the dialog does
// not hold the pointer (every point of the dialog counts as frame, since all that is not a
// button answers as caption), and "client" events while it holds the pointer after a
// press on a button.

#include <QPoint>
#include <QRect>

class DialogFrameState {
public:
    static constexpr int HitCaption = 2; // HTCAPTION
    static constexpr int HitClose = 20;  // HTCLOSE
    static constexpr int HitHelp = 21;   // HTHELP
    // Posted to the dialog for a click on the help button.
    static constexpr int HelpMessage = 1280; // WM_QG_HELP
    // The fixed amount that turns a client x into a frame x for hit-testing. It is 5 and
    // not the border width: kept as the original has it.
    static constexpr int HitTestXOffset = 5;

    enum class Command { None, Cancel, Help };

    struct Outcome {
        bool redraw = false;
        // The event goes on to the default handling (a press on the caption moves the
        // window).
        bool passOn = false;
        bool capture = false;
        bool releaseCapture = false;
        Command command = Command::None;
    };

    DialogFrameState(bool closeButton, bool helpButton)
        : m_closeButton(closeButton), m_helpButton(helpButton) {}

    void SetCaptionHeight(int height) { m_captionHeight = height; }
    // The buttons' rectangles in window coordinates, as the last frame drawing put them.
    void SetButtonRects(const QRect& close, const QRect& help) {
        m_rcClose = close;
        m_rcHelp = help;
    }

    // The code of a point in window coordinates.
    int HitTestFrame(const QPoint& windowPoint) const;
    // The hit test of the frame for a point in client coordinates; remembered as the last
    // code.
    int NcHitTest(const QPoint& clientPoint);

    Outcome NcMouseMove(int code);
    Outcome NcLButtonDown(int code);
    Outcome NcLButtonUp(int code);
    // `onlyLeftButton`: the left button, and nothing else, is held.
    Outcome MouseMove(const QPoint& clientPoint, bool onlyLeftButton);
    Outcome LButtonUp(const QPoint& clientPoint);
    // The dialog lost the pointer to someone else.
    void CaptureLost() { m_captured = false; }

    bool Down() const { return m_bDown; }
    bool Over() const { return m_bOver; }
    int Hit() const { return m_nHit; }
    int DownHit() const { return m_nDownHit; }
    bool Captured() const { return m_captured; }

private:
    QPoint ToFrame(const QPoint& clientPoint) const {
        return clientPoint + QPoint(HitTestXOffset, m_captionHeight);
    }
    bool IsButton(int code) const { return code == HitClose || code == HitHelp; }
    // The two decisions of a release: a release on the button that was pressed.
    Command ReleaseCommand(int code) const;

    bool m_closeButton;
    bool m_helpButton;
    int m_captionHeight = 0;
    QRect m_rcClose;
    QRect m_rcHelp;
    bool m_bDown = false;
    bool m_bOver = false;
    int m_nHit = 0;
    int m_nDownHit = 0;
    bool m_captured = false;
};
