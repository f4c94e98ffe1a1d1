#pragma once
// One of the two lists of the Address list page: a titled box with the entries, a field and
// button to add one, and a button to remove the selected ones. It only shows and asks: the
// page decides what an entry is and keeps the lists.

#include <QGroupBox>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

class QLineEdit;
class QListWidget;
class QPushButton;

class AddressColumn : public QGroupBox {
public:
    // `name` prefixes the object names of the parts ("allowed": "allowedList",
    // "allowedInput", "allowedAdd", "allowedRemove").
    AddressColumn(const QString& title, const QString& name, QWidget* parent);

    void SetEntries(const std::vector<std::string>& entries);
    void SetEditable(bool editable);
    void ClearInput();
    void FocusInput();
    QStringList Entries() const;

    std::function<void(const QString& text)> onAdd;
    std::function<void(const QStringList& entries)> onRemove;

private:
    void UpdateButtons();

    QListWidget* m_list;
    QLineEdit* m_input;
    QPushButton* m_add;
    QPushButton* m_remove;
    bool m_editable = true;
};
