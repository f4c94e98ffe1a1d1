#pragma once
// The main window as the handling of a service message sees it: whether it is on screen,
// and bringing it there.

#include "messaging/MainWindowView.h"

class QWidget;

class MainDlgView : public MainWindowView {
public:
    explicit MainDlgView(QWidget& window) : m_window(window) {}

    bool isVisible() override;
    void show() override;

private:
    QWidget& m_window;
};
