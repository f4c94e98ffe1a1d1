#pragma once
// What assistive technology sees of a bitmap button: a push button named by its caption,
// or by its tool tip when it has no caption (the window buttons have only pictures), that
// can be pressed, and that reports itself checked while it is down in a group.

#include <QAccessibleWidget>

class CDibButtonCtrl;

class DibButtonAccessible : public QAccessibleWidget {
public:
    explicit DibButtonAccessible(CDibButtonCtrl* button);

    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;

    // Registers the interface with Qt's accessibility, once per process.
    static void Install();

private:
    CDibButtonCtrl* Button() const;
};
