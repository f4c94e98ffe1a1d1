#pragma once
// Message boxes that nobody has to click, for the integration tests of the whole program: in
// a sandbox root, with QUILLGATE_MESSAGE_BOX_LOG naming a file, every box is appended to that
// file instead of being shown, and answered as a user who takes the safe way out would
// (No, Cancel, else OK). A program on a real installation never uses it.

#include "mainwindow/IMessageBoxes.h"

#include <string>

class SandboxMessageBoxes : public IMessageBoxes {
public:
    static constexpr const char* LogVariable = "QUILLGATE_MESSAGE_BOX_LOG";

    explicit SandboxMessageBoxes(std::string logPath);

    // One line per box: "<type in hex>|<caption>|<text>", UTF-8, line breaks of the text
    // written as "\n".
    int MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                   std::uint32_t type) override;

    // The file to record in: set only in a sandbox root with the variable set.
    static std::string ChosenLogPath();

    // The answer given for a box of `type`.
    static int AnswerFor(std::uint32_t type);

private:
    std::string m_logPath;
};
