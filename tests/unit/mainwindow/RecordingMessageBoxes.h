#pragma once
// A message box stand-in for tests: records every box that would have been shown and
// answers from a queue that the test fills (IDOK when the queue is empty).

#include "foundation/stdstr.h"
#include "mainwindow/IMessageBoxes.h"

#include <cstdint>
#include <deque>
#include <vector>

class RecordingMessageBoxes : public IMessageBoxes {
public:
    struct Box {
        QWidget* owner;
        stdstr text;
        stdstr caption;
        std::uint32_t type;
    };

    int MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                   std::uint32_t type) override {
        boxes.push_back(Box{owner, text, caption, type});
        if (answers.empty())
            return IDOK;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<Box> boxes;
    std::deque<int> answers;
};
