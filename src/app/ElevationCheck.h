#pragma once
// Whether the service's executable is run through the desktop's elevation prompt (pkexec
// and polkit). That is so where starting the service needs the administrator: the service is
// a systemd system service (no sandbox root, systemd booted) and this process does not run as
// root already. In a sandbox root the reference service is started directly, and root needs
// no prompt. This is the Linux answer to "a system that has elevation".

class ElevationCheck {
public:
    // The facts of this process: QUILLGATE_ROOT, /run/systemd/system and the effective uid.
    static bool Applies();
    static bool Applies(bool sandboxRoot, bool systemdBooted, bool effectiveRoot);
};
