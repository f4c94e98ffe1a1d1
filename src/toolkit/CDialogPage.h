#pragma once
// A page window kept by DialogPages: the main window's Status, Address list and Settings
// pages come from the plug-in as windows, and this is what the page stack knows of each.
// The window is watched, not owned: once it is destroyed, Window() answers null.

#include <QPointer>
#include <QRect>
#include <QSize>
#include <QWidget>

class CDialogPage {
public:
    explicit CDialogPage(QWidget* window = nullptr) : m_window(window) {}
    CDialogPage(const CDialogPage&) = delete;
    CDialogPage& operator=(const CDialogPage&) = delete;
    virtual ~CDialogPage() = default;

    virtual QWidget* Window() const { return m_window.data(); }
    void SetWindow(QWidget* window) { m_window = window; }

    // Lays the page out for a parent whose client area has this size, in the space right
    // of the navigation.
    virtual void OnParentSize(const QSize& parentClient);
    static QRect PageRect(const QSize& parentClient);

private:
    QPointer<QWidget> m_window;
};
