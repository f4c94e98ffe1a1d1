#include "WelcomePage.h"

#include "PageStyle.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

WelcomePage::WelcomePage(PluginPageId id, QWidget* parent)
    : PluginPage(PageKind::Welcome, id, parent) {
    auto* layout = new QVBoxLayout(this);
    PageStyle::Dress(this, layout);
    layout->addWidget(PageStyle::Heading(QString::fromUtf8("Welcome to Quillgate"), this));
    layout->addWidget(PageStyle::Intro(
        QString::fromUtf8("Quillgate keeps spam out of your inbox: it checks each message that "
                          "your mail programs receive and sets spam aside before you see it. "
                          "Two short steps set up the basics; you can change everything later."),
        this));

    QGroupBox* group = PageStyle::Group(QString::fromUtf8("Senders you trust"), this);
    auto* groupLayout = new QVBoxLayout(group);
    groupLayout->setSpacing(PageStyle::Spacing - 4);
    QLabel* hint = PageStyle::Note(group);
    hint->setText(QString::fromUtf8("Their mail is never treated as spam. Add your own address, "
                                    "your family, your bank or a whole domain."));
    m_input = new QLineEdit(group);
    m_input->setObjectName(QString::fromLatin1("trustedInput"));
    m_input->setPlaceholderText(QString::fromUtf8("name@example.com or example.com"));
    m_input->setClearButtonEnabled(true);
    m_add = new QPushButton(QString::fromUtf8("Add"), group);
    m_add->setObjectName(QString::fromLatin1("trustedAdd"));
    m_trusted = new QListWidget(group);
    m_trusted->setObjectName(QString::fromLatin1("trustedList"));
    m_trusted->setSelectionMode(QAbstractItemView::NoSelection);
    m_message = PageStyle::Note(group);
    m_message->setObjectName(QString::fromLatin1("message"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_input, 1);
    row->addWidget(m_add);
    groupLayout->addWidget(hint);
    groupLayout->addLayout(row);
    groupLayout->addWidget(m_trusted, 1);
    groupLayout->addWidget(m_message);
    for (QWidget* child : group->findChildren<QWidget*>()) {
        QFont font = child->font();
        font.setBold(false);
        child->setFont(font);
    }
    layout->addWidget(group, 1);

    connect(m_add, &QPushButton::clicked, this, [this] { AddTrusted(); });
    connect(m_input, &QLineEdit::returnPressed, this, [this] { AddTrusted(); });
    connect(m_input, &QLineEdit::textChanged, this,
            [this] { m_add->setEnabled(!m_input->text().trimmed().isEmpty()); });
    m_add->setEnabled(false);
    m_book.Load();
    ShowTrusted();
}

void WelcomePage::Activate() {
    PluginPage::Activate();
    m_book.Load();
    ShowTrusted();
}

void WelcomePage::AddTrusted() {
    const QString typed = m_input->text().trimmed();
    if (typed.isEmpty())
        return;
    // The file may have been changed since it was read (by the Address list page).
    m_book.Load();
    switch (m_book.Add(AddressBook::List::Allowed, typed.toStdString())) {
    case AddressBook::AddResult::Invalid:
        m_message->setText(
            QString::fromUtf8("\u201C%1\u201D is neither an address nor a domain.").arg(typed));
        return;
    case AddressBook::AddResult::AlreadyThere:
        m_message->setText(QString::fromUtf8("That sender is already trusted."));
        break;
    case AddressBook::AddResult::Added:
    case AddressBook::AddResult::Moved:
        if (m_book.Save())
            m_message->clear();
        else
            m_message->setText(QString::fromUtf8("The address lists could not be saved."));
        break;
    }
    m_input->clear();
    ShowTrusted();
}

void WelcomePage::ShowTrusted() {
    m_trusted->clear();
    for (const std::string& entry : m_book.Entries(AddressBook::List::Allowed))
        m_trusted->addItem(QString::fromStdString(entry));
}
