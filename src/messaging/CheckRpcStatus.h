#pragma once
// The status check of every send to the filter service, and with it the program's only
// detector of the service going away and coming back: the ping of each second keeps it fed.
// Status 65535 marks the service as gone; the next status that is not an error marks it as
// back. Each change is sent to the main window before the caller goes on, so that the window
// has reacted before the sender sees the outcome.

#include <atomic>
#include <cstdint>

// 1 while the service is taken to be answering. It starts at 1, whatever the truth: a
// service that was never reached counts as connected until the first status 65535. The
// main window, the tray menu and the status pop-up read it.
extern std::atomic<std::int32_t> ServiceConnected;

// Throws Corvane::BaseException (with `file`, `line` and code -1) for the five error
// statuses 65531 to 65535, whose words it carries. Status 65535 first clears
// ServiceConnected and sends 1062 with wParam 1 to the main window, if the flag was set. Any
// other status sets a cleared flag and sends 1062 with 0, then 1058. Statuses 65531 to 65534
// leave the flag as it is.
void CheckRpcStatus(std::uint32_t status, const char* file, std::int32_t line);
