#include "toolkit/DibButtonAccessible.h"

#include "toolkit/CDibButtonCtrl.h"

#include <mutex>

namespace {

QAccessibleInterface* Factory(const QString& className, QObject* object) {
    if (className == QLatin1String("CDibButtonCtrl") && object != nullptr && object->isWidgetType())
        // Qt owns the interfaces that factories make.
        return new DibButtonAccessible(static_cast<CDibButtonCtrl*>(object));
    return nullptr;
}

} // namespace

DibButtonAccessible::DibButtonAccessible(CDibButtonCtrl* button)
    : QAccessibleWidget(button, QAccessible::Button) {}

CDibButtonCtrl* DibButtonAccessible::Button() const {
    return static_cast<CDibButtonCtrl*>(widget());
}

QString DibButtonAccessible::text(QAccessible::Text t) const {
    if (t == QAccessible::Name) {
        if (!widget()->accessibleName().isEmpty())
            return widget()->accessibleName();
        return Button()->AccessibleButtonName();
    }
    // Without a caption the tip is already the name; it is not read twice.
    if (t == QAccessible::Description)
        return Button()->Caption().isEmpty() ? widget()->accessibleDescription()
                                             : Button()->ToolTipText();
    return QAccessibleWidget::text(t);
}

QAccessible::State DibButtonAccessible::state() const {
    QAccessible::State s = QAccessibleWidget::state();
    const DibButtonState& buttonState = Button()->State();
    s.pressed = buttonState.Pressed();
    if (!buttonState.PushMode() || buttonState.Latched()) {
        s.checkable = true;
        s.checked = buttonState.GetCheckState();
    }
    return s;
}

QStringList DibButtonAccessible::actionNames() const {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
}

void DibButtonAccessible::doAction(const QString& actionName) {
    if (actionName == pressAction())
        Button()->Activate();
    else
        QAccessibleWidget::doAction(actionName);
}

void DibButtonAccessible::Install() {
    static std::once_flag once;
    std::call_once(once, [] { QAccessible::installFactory(Factory); });
}
