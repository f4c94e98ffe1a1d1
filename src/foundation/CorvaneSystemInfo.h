#pragma once
// Corvane::SystemInfo: what the rest of the system asks of the machine: the folders, the
// screen and the desktop panel, and which system runs. Made on the stack, used, dropped.
// The Windows family tests answer false: this is no Windows. The screen's answers come from
// the ScreenAreaSource that the GUI layer installed; without one they are 0 and the panel
// is taken to be at the bottom.

#include "foundation/OperatingSystemVersion.h"
#include "foundation/Rect.h"

#include <string>
#include <vector>

namespace Corvane {

class SystemInfo {
public:
    SystemInfo();
    // Reads os-release from the first readable of `osReleasePaths` instead of the system's.
    explicit SystemInfo(std::vector<std::string> osReleasePaths);
    virtual ~SystemInfo();

    // There is no Windows folder: empty.
    virtual std::u16string getWindowsFolder() const;
    // The working folder; empty when it cannot be read (it was removed).
    virtual std::u16string getCurrentFolder() const;
    // $XDG_CONFIG_HOME, else ~/.config; empty when neither can be told.
    virtual std::u16string getAppDataFolder() const;
    // $TMPDIR, else /tmp, without a trailing '/'.
    virtual std::u16string getTempFolder() const;
    // $HOME, else the home folder of the account; empty when neither is known.
    virtual std::u16string getUserProfileFolder() const;

    virtual bool isWin9x() const;
    virtual bool isWinNTOrLater() const;
    virtual bool isWin2000() const;
    virtual bool isWinXP() const;
    virtual bool isWinNT() const;
    virtual bool isWinXPOrServer2003() const;
    virtual bool isServer2003() const;
    virtual bool isVista() const;

    virtual int getBitsPerPixel() const;
    // The panel's rectangle into `taskbar` and the notification area's guessed rectangle
    // into `notifyArea`. Without a panel only `notifyArea` is set, to the corner of the
    // work area; without a screen source neither is touched.
    virtual void getTaskbarRects(Rect& taskbar, Rect& notifyArea) const;
    virtual int getScreenWidth() const;
    virtual int getScreenHeight() const;
    // 0 left, 1 top, 2 right, 3 bottom; 3 when there is no panel.
    virtual int getTaskbarEdge() const;
    // Reads the system's version again; false when the kernel did not answer.
    virtual bool readVersion();

    // The "Operating System" text of the About box.
    virtual std::u16string getOperatingSystemText() const;

private:
    OperatingSystemVersion m_version;
};

} // namespace Corvane
