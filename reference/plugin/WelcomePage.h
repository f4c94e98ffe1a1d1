#pragma once
// The first page of the first-run wizard: what Quillgate does, and the senders the user
// trusts, who go straight to the allowed senders of the Address list (the user's file), so
// that their mail is never taken for spam from the first day.

#include "AddressBook.h"
#include "PluginPage.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

class WelcomePage final : public PluginPage {
public:
    WelcomePage(PluginPageId id, QWidget* parent);

    void Activate() override;

private:
    void AddTrusted();
    void ShowTrusted();

    AddressBook m_book;
    QLineEdit* m_input = nullptr;
    QPushButton* m_add = nullptr;
    QListWidget* m_trusted = nullptr;
    QLabel* m_message = nullptr;
};
