#pragma once
// The plug-in loader's message boxes in a test: each text written down, each box answered
// with OK, nothing shown.

#include "foundation/stdstr.h"
#include "mainwindow/IMessageBoxes.h"

#include <vector>

class BoxRecorder : public IMessageBoxes {
public:
    int MessageBox(QWidget*, const stdstr& text, const stdstr&, std::uint32_t) override {
        texts.push_back(text);
        return IDOK;
    }
    std::vector<stdstr> texts;
};
