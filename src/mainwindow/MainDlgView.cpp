#include "mainwindow/MainDlgView.h"

#include <QWidget>

bool MainDlgView::isVisible() {
    return m_window.isVisible();
}

void MainDlgView::show() {
    m_window.show();
}
