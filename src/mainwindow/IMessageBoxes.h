#pragma once
// Every message box of the program goes through this one interface, so that a test can
// answer the boxes and read what was shown, without a display and without waiting. The
// type bits and the answers keep their Windows values, because the texts and rules that
// choose them are told in those terms.

#include "foundation/stdstr.h"

#include <cstdint>

class QWidget;

class IMessageBoxes {
public:
    // Buttons (the low four bits of `type`).
    static constexpr std::uint32_t MB_OK = 0x0;
    static constexpr std::uint32_t MB_OKCANCEL = 0x1;
    static constexpr std::uint32_t MB_YESNO = 0x4;
    // Icons.
    static constexpr std::uint32_t MB_ICONHAND = 0x10;
    static constexpr std::uint32_t MB_ICONQUESTION = 0x20;
    static constexpr std::uint32_t MB_ICONEXCLAMATION = 0x30;
    static constexpr std::uint32_t MB_ICONASTERISK = 0x40;
    static constexpr std::uint32_t ButtonMask = 0xF;
    static constexpr std::uint32_t IconMask = 0xF0;

    // Answers.
    static constexpr int IDOK = 1;
    static constexpr int IDCANCEL = 2;
    static constexpr int IDYES = 6;
    static constexpr int IDNO = 7;

    // Shows `text` modally with `caption` as the title, owned by `owner` (null: no owner),
    // and answers the button that closed it.
    virtual int MessageBox(QWidget* owner, const stdstr& text, const stdstr& caption,
                           std::uint32_t type) = 0;

    virtual ~IMessageBoxes() = default;

protected:
    IMessageBoxes() = default;
    IMessageBoxes(const IMessageBoxes&) = default;
    IMessageBoxes& operator=(const IMessageBoxes&) = default;
};
