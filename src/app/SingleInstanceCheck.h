#pragma once
// Whether this is the first running copy of the program, machine-wide: the named mutex
// "VelloranQuillgate" (a lock file that every user may open) exists while a copy holds it. A
// copy that finds it taken plays sound 204 and asks the first copy of its own user to show
// and raise the main window, whose title must be string 128 as the program's table has it;
// then it leaves. The mutex is a test of existence only: nobody ever locks it.

#include "foundation/Mutex.h"

#include <QString>

#include <cstdint>
#include <memory>

class SingleInstanceCheck {
public:
    static constexpr int AlreadyRunningSound = 204;
    static constexpr std::uint32_t MainWindowTitleId = 128;
    static constexpr const char16_t* NoWindowTrace = u"Cannot find VLQuillgate window";

    // `socketPath` is where the first copy listens (ActivationListener).
    explicit SingleInstanceCheck(QString socketPath);

    // Creates the mutex into `mutex`, which keeps it (and with it the name) for as long as it
    // lives; true when no other copy had it.
    bool Check(std::unique_ptr<Corvane::Mutex>& mutex);

    // String 128 of the table as it stands, not translated.
    static QString MainWindowTitle();

private:
    QString m_socketPath;
};
