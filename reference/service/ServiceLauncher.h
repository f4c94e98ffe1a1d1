#pragma once
// "-Start" and "-Stop": the service as the program sees it. Start leaves a daemon behind
// and returns once that daemon listens, so that the caller's next request finds it; stop
// returns once the daemon is gone. Both answer 0 for "done" (also when there was nothing to
// do) and 1 with a line on standard error otherwise; never 126 or 127, which pkexec keeps
// for "dismissed" and "not authorised".

class ServiceLauncher {
public:
    // Seconds that start waits for the daemon to listen, and stop for it to end.
    static constexpr int StartSeconds = 10;
    static constexpr int StopSeconds = 10;

    static int start();
    static int stop();
    // Serves in this process, in the foreground, until SIGTERM or SIGINT.
    static int foreground();
};
