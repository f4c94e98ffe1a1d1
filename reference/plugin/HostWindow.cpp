#include "HostWindow.h"

#include "mainwindow/PrivateMessages.h"
#include "toolkit/PrivateMessageEvent.h"

std::intptr_t HostWindow::GetValue(int code, std::intptr_t value) const {
    if (m_window.isNull())
        return 0;
    return PrivateMessageEvent::Send(m_window.data(), WM_QG_GET_INFO,
                                     static_cast<PrivateMessageEvent::WParam>(code), value);
}

std::intptr_t HostWindow::SetValue(int code, std::intptr_t value) const {
    if (m_window.isNull())
        return 0;
    return PrivateMessageEvent::Send(m_window.data(), WM_QG_SET_INFO,
                                     static_cast<PrivateMessageEvent::WParam>(code), value);
}

QString HostWindow::GetText(int code) const {
    const std::intptr_t answer = GetValue(code);
    if (answer == 0)
        return QString();
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(answer));
}

std::intptr_t HostWindow::SetText(int code, const QString& text) const {
    const std::u16string copy = text.toStdU16String();
    return SetValue(code, reinterpret_cast<std::intptr_t>(copy.c_str()));
}

void HostWindow::ChangeLanguage(std::uint32_t languageId) const {
    if (m_window.isNull())
        return;
    PrivateMessageEvent::Post(m_window.data(), WM_QG_LANGUAGE, languageId, 0);
}
