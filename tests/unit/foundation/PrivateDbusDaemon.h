#pragma once
// A D-Bus daemon of a test's own: started in the constructor with a configuration that lets
// everybody own and call anything, listening on a socket in `folder`; its address is known
// once the daemon has printed it, so the bus is ready without any waiting. Its diagnostics
// go to dbus-daemon.log in `folder`. Stopped in the destructor.

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

class PrivateDbusDaemon {
public:
    explicit PrivateDbusDaemon(const std::string& folder) {
        const std::string config = folder + "/bus.conf";
        std::ofstream(config)
            << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration "
               "1.0//EN\"\n"
               " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
               "<busconfig>\n"
               "  <type>custom</type>\n"
               "  <listen>unix:path="
            << folder
            << "/bus</listen>\n"
               "  <auth>EXTERNAL</auth>\n"
               "  <policy context=\"default\">\n"
               "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
               "    <allow eavesdrop=\"true\"/>\n"
               "    <allow own=\"*\"/>\n"
               "  </policy>\n"
               "</busconfig>\n";
        int fds[2];
        if (::pipe2(fds, O_CLOEXEC) != 0)
            return;
        const std::string configArgument = "--config-file=" + config;
        const std::string log = folder + "/dbus-daemon.log";
        const char* argv[] = {"dbus-daemon", configArgument.c_str(), "--nofork",
                              "--print-address=3", nullptr};
        m_pid = ::fork();
        if (m_pid == 0) {
            // Only async-signal-safe calls between fork and exec.
            if (fds[1] == 3)
                ::fcntl(3, F_SETFD, 0);
            else
                ::dup2(fds[1], 3);
            const int logFd = ::open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
            if (logFd >= 0)
                ::dup2(logFd, 2);
            ::execvp("dbus-daemon", const_cast<char* const*>(argv));
            ::_exit(127);
        }
        ::close(fds[1]);
        m_address = readLine(fds[0]);
        ::close(fds[0]);
    }

    ~PrivateDbusDaemon() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGTERM);
            int status = 0;
            while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
            }
        }
    }

    PrivateDbusDaemon(const PrivateDbusDaemon&) = delete;
    PrivateDbusDaemon& operator=(const PrivateDbusDaemon&) = delete;

    // Empty when the daemon did not start.
    const std::string& address() const { return m_address; }

private:
    // The daemon's first line, read with a deadline so that a daemon that never answers
    // fails the test instead of hanging it.
    static std::string readLine(int fd) {
        std::string line;
        for (;;) {
            pollfd ready{fd, POLLIN, 0};
            if (::poll(&ready, 1, 10000) <= 0)
                return {};
            char c = 0;
            const ssize_t n = ::read(fd, &c, 1);
            if (n <= 0)
                return {};
            if (c == '\n')
                return line;
            line += c;
        }
    }

    pid_t m_pid = -1;
    std::string m_address;
};
