#pragma once
// The base of the plug-in's pages: a widget that knows which page it is and the id under
// which the host knows it, writes every private message it receives into the journal before
// handling it, and takes its place in the main window from the page metrics when the host
// resizes it.

#include "PageKind.h"
#include "PageMetrics.h"

#include "mainwindow/PluginContract.h"
#include "toolkit/PrivateMessageEvent.h"

#include <QWidget>

class PluginPage : public QWidget {
public:
    PluginPage(PageKind kind, PluginPageId id, QWidget* parent);

    PageKind Kind() const { return m_kind; }
    PluginPageId Id() const { return m_id; }

    // ResizePage: the main window's client area is `width` by `height`.
    void Place(const PageMetrics& metrics, int width, int height);
    // ShowPage: the page becomes the one shown.
    virtual void Activate();
    // SetLanguage: the host's language is now `name`.
    virtual void LanguageChanged(const QString& name);

protected:
    bool event(QEvent* event) override;
    // A private message for this page; the answer goes back to a sender that waits.
    virtual PrivateMessageEvent::Result OnPrivateMessage(int message,
                                                         PrivateMessageEvent::WParam wParam,
                                                         PrivateMessageEvent::LParam lParam);

private:
    PageKind m_kind;
    PluginPageId m_id;
};
