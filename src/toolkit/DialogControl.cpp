#include "toolkit/DialogControl.h"

#include <QVariant>

void DialogControl::SetId(QWidget* control, int id) {
    if (control == nullptr)
        return;
    control->setProperty(IdProperty, id);
    if (control->objectName().isEmpty())
        control->setObjectName(QString::number(id));
}

int DialogControl::Id(const QWidget* control) {
    if (control == nullptr)
        return 0;
    const QVariant id = control->property(IdProperty);
    if (id.isValid())
        return id.toInt();
    // A control named by its number only (as SetId names it) counts as well.
    bool numeric = false;
    const int named = control->objectName().toInt(&numeric);
    return numeric ? named : 0;
}

QWidget* DialogControl::Find(const QWidget* dialog, int id) {
    if (dialog == nullptr)
        return nullptr;
    const auto children = dialog->findChildren<QWidget*>();
    for (QWidget* child : children) {
        if (Id(child) == id)
            return child;
    }
    return nullptr;
}
