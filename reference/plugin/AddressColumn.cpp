#include "AddressColumn.h"

#include "PageStyle.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

AddressColumn::AddressColumn(const QString& title, const QString& name, QWidget* parent)
    : QGroupBox(title, parent), m_list(new QListWidget(this)), m_input(new QLineEdit(this)),
      m_add(new QPushButton(QString::fromUtf8("Add"), this)),
      m_remove(new QPushButton(QString::fromUtf8("Remove selected"), this)) {
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    for (QWidget* part : {static_cast<QWidget*>(m_list), static_cast<QWidget*>(m_input),
                          static_cast<QWidget*>(m_add), static_cast<QWidget*>(m_remove)}) {
        QFont plain = part->font();
        plain.setBold(false);
        part->setFont(plain);
    }
    m_list->setObjectName(name + QString::fromLatin1("List"));
    m_input->setObjectName(name + QString::fromLatin1("Input"));
    m_add->setObjectName(name + QString::fromLatin1("Add"));
    m_remove->setObjectName(name + QString::fromLatin1("Remove"));

    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setAlternatingRowColors(true);
    m_list->setUniformItemSizes(true);
    m_input->setPlaceholderText(QString::fromUtf8("name@example.com or example.com"));
    m_input->setClearButtonEnabled(true);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(PageStyle::Spacing - 4);
    layout->addWidget(m_list, 1);
    auto* addRow = new QHBoxLayout;
    addRow->setSpacing(PageStyle::Spacing - 4);
    addRow->addWidget(m_input, 1);
    addRow->addWidget(m_add);
    layout->addLayout(addRow);
    layout->addWidget(m_remove, 0, Qt::AlignRight);

    const auto add = [this] {
        if (onAdd && !m_input->text().trimmed().isEmpty())
            onAdd(m_input->text());
    };
    connect(m_add, &QPushButton::clicked, this, add);
    connect(m_input, &QLineEdit::returnPressed, this, add);
    connect(m_input, &QLineEdit::textChanged, this, [this] { UpdateButtons(); });
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] { UpdateButtons(); });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        QStringList selected;
        for (const QListWidgetItem* item : m_list->selectedItems())
            selected.push_back(item->text());
        if (onRemove && !selected.isEmpty())
            onRemove(selected);
    });
    UpdateButtons();
}

void AddressColumn::SetEntries(const std::vector<std::string>& entries) {
    m_list->clear();
    for (const std::string& entry : entries)
        m_list->addItem(QString::fromStdString(entry));
    UpdateButtons();
}

void AddressColumn::SetEditable(bool editable) {
    m_editable = editable;
    m_input->setVisible(editable);
    m_add->setVisible(editable);
    m_remove->setVisible(editable);
    UpdateButtons();
}

void AddressColumn::ClearInput() {
    m_input->clear();
}

void AddressColumn::FocusInput() {
    m_input->setFocus();
}

QStringList AddressColumn::Entries() const {
    QStringList entries;
    for (int i = 0; i < m_list->count(); ++i)
        entries.push_back(m_list->item(i)->text());
    return entries;
}

void AddressColumn::UpdateButtons() {
    m_add->setEnabled(m_editable && !m_input->text().trimmed().isEmpty());
    m_remove->setEnabled(m_editable && !m_list->selectedItems().isEmpty());
}
