#include "app/UnshownBoxAnswer.h"

#include "mainwindow/IMessageBoxes.h"

int UnshownBoxAnswer::For(std::uint32_t type) {
    switch (type & IMessageBoxes::ButtonMask) {
    case IMessageBoxes::MB_OKCANCEL:
        return IMessageBoxes::IDCANCEL;
    case IMessageBoxes::MB_YESNO:
        return IMessageBoxes::IDNO;
    default:
        return IMessageBoxes::IDOK;
    }
}
