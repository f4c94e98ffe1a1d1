#pragma once
// The main window as a page reaches it: the set and get requests (private messages 1051 and
// 1052, sent, so that the answer comes back), and the language change (1055, posted, since
// the host calls the plug-in back while it handles it). A page of the main window has the
// window as the parent it was created with; the wizard's pages reach the main window that
// the plug-in remembers from the main window's pages. Without a window every request
// answers 0 and nothing is sent.

#include <QPointer>
#include <QString>
#include <QWidget>

#include <cstdint>

class HostWindow {
public:
    HostWindow() = default;
    explicit HostWindow(QWidget* window) : m_window(window) {}

    bool Present() const { return !m_window.isNull(); }
    QWidget* Window() const { return m_window.data(); }

    std::intptr_t GetValue(int code, std::intptr_t value = 0) const;
    std::intptr_t SetValue(int code, std::intptr_t value) const;
    // A get request whose answer points to a terminated UTF-16 text; empty for a null answer.
    QString GetText(int code) const;
    // A set request with a pointer to `text`, valid for the time of the request (the host
    // copies it).
    std::intptr_t SetText(int code, const QString& text) const;
    // Posts the language change with `languageId`.
    void ChangeLanguage(std::uint32_t languageId) const;

private:
    QPointer<QWidget> m_window;
};
