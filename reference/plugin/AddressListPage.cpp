#include "AddressListPage.h"

#include "AddressColumn.h"
#include "PageStyle.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QString ListName(AddressBook::List list) {
    return list == AddressBook::List::Allowed ? QString::fromUtf8("the allowed senders")
                                              : QString::fromUtf8("the blocked senders");
}

// The path with the home folder written as "~", which is shorter and says the same.
QString ShownPath(const std::string& path) {
    const QString full = QString::fromStdString(path);
    const QString home = QDir::homePath();
    if (!home.isEmpty() && full.startsWith(home + QLatin1Char('/')))
        return QString::fromLatin1("~") + full.mid(home.size());
    return full;
}

} // namespace

AddressListPage::AddressListPage(PluginPageId id, const Options& options, QWidget* parent)
    : PluginPage(PageKind::AddressList, id, parent), m_options(options) {
    auto* layout = new QVBoxLayout(this);
    PageStyle::Dress(this, layout);
    layout->addWidget(PageStyle::Heading(QString::fromUtf8("Address List"), this));
    layout->addWidget(PageStyle::Intro(
        QString::fromUtf8("Mail from an allowed sender is never treated as spam; mail from a "
                          "blocked sender always is. Enter a whole address, or a domain such "
                          "as example.com for everybody who writes from it."),
        this));

    auto* columns = new QHBoxLayout;
    columns->setSpacing(PageStyle::Spacing + 2);
    m_allowed = new AddressColumn(QString::fromUtf8("Allowed senders"),
                                  QString::fromLatin1("allowed"), this);
    m_blocked = new AddressColumn(QString::fromUtf8("Blocked senders"),
                                  QString::fromLatin1("blocked"), this);
    columns->addWidget(m_allowed, 1);
    columns->addWidget(m_blocked, 1);
    layout->addLayout(columns, 1);

    m_message = PageStyle::Note(this);
    m_message->setObjectName(QString::fromLatin1("message"));
    m_where = PageStyle::Note(this);
    m_where->setObjectName(QString::fromLatin1("location"));
    layout->addWidget(m_message);
    layout->addWidget(m_where);

    m_blocked->setVisible(m_options.lists >= 2);
    m_allowed->SetEditable(m_options.editable);
    m_blocked->SetEditable(m_options.editable);
    m_allowed->onAdd = [this](const QString& text) { AddEntry(AddressBook::List::Allowed, text); };
    m_blocked->onAdd = [this](const QString& text) { AddEntry(AddressBook::List::Blocked, text); };
    m_allowed->onRemove = [this](const QStringList& entries) {
        RemoveEntries(AddressBook::List::Allowed, entries);
    };
    m_blocked->onRemove = [this](const QStringList& entries) {
        RemoveEntries(AddressBook::List::Blocked, entries);
    };
    Reload();
}

void AddressListPage::Activate() {
    PluginPage::Activate();
    Reload();
    if (m_options.editable)
        (m_options.focus == 1 && m_options.lists >= 2 ? m_blocked : m_allowed)->FocusInput();
}

void AddressListPage::Reload() {
    m_book = AddressBook();
    if (!m_book.Load())
        m_message->setText(QString::fromUtf8("The lists could not be read from %1.")
                               .arg(ShownPath(m_book.Path())));
    m_where->setText(QString::fromUtf8("Kept in %1").arg(ShownPath(m_book.Path())));
    ShowLists();
}

void AddressListPage::ShowLists() {
    m_allowed->SetEntries(m_book.Entries(AddressBook::List::Allowed));
    m_blocked->SetEntries(m_book.Entries(AddressBook::List::Blocked));
}

bool AddressListPage::Store() {
    if (m_book.Save())
        return true;
    m_message->setText(
        QString::fromUtf8("The lists could not be saved to %1.").arg(ShownPath(m_book.Path())));
    return false;
}

void AddressListPage::AddEntry(AddressBook::List list, const QString& text) {
    const std::string typed = text.trimmed().toStdString();
    const std::optional<std::string> entry = AddressBook::Normalise(typed);
    const QString shown = entry ? QString::fromStdString(*entry) : text.trimmed();
    AddressColumn* column = list == AddressBook::List::Allowed ? m_allowed : m_blocked;
    switch (m_book.Add(list, typed)) {
    case AddressBook::AddResult::Invalid:
        m_message->setText(
            QString::fromUtf8("\u201C%1\u201D is neither an address nor a domain.").arg(shown));
        return;
    case AddressBook::AddResult::AlreadyThere:
        m_message->setText(QString::fromUtf8("%1 is already among %2.").arg(shown, ListName(list)));
        column->ClearInput();
        return;
    case AddressBook::AddResult::Moved: {
        const AddressBook::List other = list == AddressBook::List::Allowed
                                            ? AddressBook::List::Blocked
                                            : AddressBook::List::Allowed;
        m_message->setText(QString::fromUtf8("Moved %1 from %2 to %3.")
                               .arg(shown, ListName(other), ListName(list)));
        break;
    }
    case AddressBook::AddResult::Added:
        m_message->setText(QString::fromUtf8("Added %1 to %2.").arg(shown, ListName(list)));
        break;
    }
    column->ClearInput();
    ShowLists();
    Store();
}

void AddressListPage::RemoveEntries(AddressBook::List list, const QStringList& entries) {
    int removed = 0;
    for (const QString& entry : entries) {
        if (m_book.Remove(list, entry.toStdString()))
            ++removed;
    }
    if (removed == 1)
        m_message->setText(
            QString::fromUtf8("Removed %1 from %2.").arg(entries.front(), ListName(list)));
    else
        m_message->setText(QString::fromUtf8("Removed %1 entries from %2.")
                               .arg(QString::number(removed), ListName(list)));
    ShowLists();
    Store();
}
