#pragma once
// AccountInfo: whether the user of this process is an administrator, which decides whether
// the filter service may be started and some settings changed. An administrator is the
// superuser (effective uid 0) or a member of one of the groups through which a desktop
// grants administration: "sudo" (Debian, Ubuntu), "wheel" (Fedora, Arch), "admin" (older
// Ubuntu). Made on the stack, asked once, dropped.

#include "foundation/stdstr.h"

#include <memory>

class AccountLookup;

class AccountInfo {
public:
    // Reads the computer's name.
    AccountInfo();
    // Asks `lookup` instead of the system's account database.
    explicit AccountInfo(std::shared_ptr<const AccountLookup> lookup);
    virtual ~AccountInfo();

    bool isAdministrator();
    // The answer for the effective user; a failed lookup answers false with one line at
    // TRACE_ERROR.
    bool determineAdmin();

    // Empty when the name could not be read; kept for diagnostics only.
    const stdstr& computerName() const { return m_computerName; }

private:
    std::shared_ptr<const AccountLookup> m_lookup;
    stdstr m_computerName;
};
