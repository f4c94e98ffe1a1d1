#pragma once
// Controls of a dialog are found by their number, as the dialogs' code and the plug-in
// refer to them: the number is kept as a property of the widget and also names it, so
// that tests can find a control by object name.

#include <QWidget>

class DialogControl {
public:
    static constexpr const char* IdProperty = "qgControlId";

    // Sets the number and, if the widget has no name yet, names it after the number.
    static void SetId(QWidget* control, int id);
    // The number, or 0 for a widget without one (a widget whose object name is a number
    // has that number).
    static int Id(const QWidget* control);
    // The first child (at any depth) of `dialog` with that number, or null.
    static QWidget* Find(const QWidget* dialog, int id);
};
