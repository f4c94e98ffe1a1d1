#pragma once
// The message boxes of the running program, shown with QMessageBox.

#include "mainwindow/IMessageBoxes.h"

class QtMessageBoxes : public IMessageBoxes {
public:
    int MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                   std::uint32_t type) override;
};
