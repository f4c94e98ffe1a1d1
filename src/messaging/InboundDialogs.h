#pragma once
// The modal boxes and the reinstall prompt that the service's component-failure messages
// lead to. The GUI implements it over its message boxes and the reinstall dialog; tests
// queue the answers and read what was shown. It is called on the GUI thread (when the main
// window handles the message) and also on the inbound pump's thread (when there is no main
// window yet), so an implementation shows its dialogs on the GUI thread and blocks the
// calling thread until they are closed.
//
// Types and answers keep their Windows values, those of the GUI's message boxes.

#include "foundation/stdstr.h"

#include <cstdint>

class InboundDialogs {
public:
    // Which window owns a box.
    enum class Owner {
        None,       // no owner, as before the main window exists
        MainWindow, // the main window
    };

    static constexpr std::uint32_t MB_OK = 0x0;
    static constexpr std::uint32_t MB_YESNO = 0x4;
    static constexpr std::uint32_t MB_ICONHAND = 0x10;

    static constexpr int IDOK = 1;
    static constexpr int IDYES = 6;
    static constexpr int IDNO = 7;

    // The reinstall prompt's answers.
    static constexpr int ReinstallAllow = 1;
    static constexpr int ReinstallCancel = 2;

    // Shows `text` modally with `title` as caption (an empty title: the system's default
    // caption) and answers the button that closed it.
    virtual int MessageBox(Owner owner, const stdstr& text, const stdstr& title,
                           std::uint32_t type) = 0;
    // The reinstall prompt (CReInstallDlg), modal, owned by the active window; answers
    // ReinstallAllow or ReinstallCancel.
    virtual int ReinstallPrompt() = 0;

    virtual ~InboundDialogs() = default;

protected:
    InboundDialogs() = default;
    InboundDialogs(const InboundDialogs&) = default;
    InboundDialogs& operator=(const InboundDialogs&) = default;
};
