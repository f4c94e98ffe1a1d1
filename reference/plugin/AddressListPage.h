#pragma once
// The Address list page: the allowed and the blocked senders side by side, each with its
// own field to add an entry and a button to remove the selected ones, and a line that says
// what the last action did. The lists live in the user's file (AddressBook), which is read
// again whenever the page is shown, and written after each change.
//
// CreateListPage's three numbers are read as: how many lists to show (2: both, 1: the
// allowed senders only), which list's field has the focus first (0 allowed, 1 blocked), and
// whether the lists may be changed (0: shown only).

#include "AddressBook.h"
#include "PluginPage.h"

class AddressColumn;
class QLabel;

class AddressListPage final : public PluginPage {
public:
    struct Options {
        std::int32_t lists = 2;
        std::int32_t focus = 0;
        bool editable = true;
    };

    AddressListPage(PluginPageId id, const Options& options, QWidget* parent);

    void Activate() override;
    // Reads the file again and shows what it holds.
    void Reload();

private:
    void AddEntry(AddressBook::List list, const QString& text);
    void RemoveEntries(AddressBook::List list, const QStringList& entries);
    void ShowLists();
    // Writes the file; on failure says so in the message line and answers false.
    bool Store();

    Options m_options;
    AddressBook m_book;
    AddressColumn* m_allowed = nullptr;
    AddressColumn* m_blocked = nullptr;
    QLabel* m_message = nullptr;
    QLabel* m_where = nullptr;
};
