#include "PluginPage.h"

#include "JournalLine.h"

PluginPage::PluginPage(PageKind kind, PluginPageId id, QWidget* parent)
    : QWidget(parent), m_kind(kind), m_id(id) {
    setObjectName(QString::fromLatin1(PageKindName(kind).data(),
                                      static_cast<qsizetype>(PageKindName(kind).size())));
}

void PluginPage::Place(const PageMetrics& metrics, int width, int height) {
    setGeometry(metrics.PageRect(width, height));
}

void PluginPage::Activate() {
    show();
    raise();
}

void PluginPage::LanguageChanged(const QString& /*name*/) {}

bool PluginPage::event(QEvent* event) {
    const int message = static_cast<int>(event->type());
    if (!PrivateMessageEvent::IsPrivateMessage(message))
        return QWidget::event(event);
    // The contract says that a private message is a PrivateMessageEvent.
    auto* privateMessage = static_cast<PrivateMessageEvent*>(event);
    JournalLine("Message")
        .Word(PageKindName(m_kind))
        .Number(message)
        .Number(static_cast<std::int64_t>(privateMessage->wParam()))
        .Number(privateMessage->lParam())
        .Write();
    privateMessage->SetResult(
        OnPrivateMessage(message, privateMessage->wParam(), privateMessage->lParam()));
    return true;
}

PrivateMessageEvent::Result PluginPage::OnPrivateMessage(int /*message*/,
                                                         PrivateMessageEvent::WParam /*wParam*/,
                                                         PrivateMessageEvent::LParam /*lParam*/) {
    return 0;
}
