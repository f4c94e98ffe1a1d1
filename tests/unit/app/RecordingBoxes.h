#pragma once
// Message boxes for supervision tests: every box is recorded with the thread that asked for
// it, and answered IDOK. Safe to call from the start dialog's worker.

#include "foundation/stdstr.h"
#include "mainwindow/IMessageBoxes.h"

#include <QThread>

#include <cstdint>
#include <mutex>
#include <vector>

class RecordingBoxes : public IMessageBoxes {
public:
    struct Box {
        QWidget* owner = nullptr;
        stdstr text;
        stdstr caption;
        std::uint32_t type = 0;
        QThread* thread = nullptr;
    };

    int MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                   std::uint32_t type) override {
        std::lock_guard<std::mutex> guard(m_lock);
        m_boxes.push_back(Box{owner, text, caption, type, QThread::currentThread()});
        return IDOK;
    }

    std::vector<Box> Boxes() const {
        std::lock_guard<std::mutex> guard(m_lock);
        return m_boxes;
    }

private:
    mutable std::mutex m_lock;
    std::vector<Box> m_boxes;
};
