// LogindReboot against a bus of its own: a private dbus-daemon stands in for the system bus
// and a small logind stand-in answers Reboot, so that nothing here can reach the machine's
// logind. The systemctl of the fallback is a script that records its arguments.
#include "messaging/LogindReboot.h"

#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <systemd/sd-bus.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

using TestSupport::SandboxRoot;
using TestSupport::WaitFor;

constexpr const char* BusVariable = "DBUS_SYSTEM_BUS_ADDRESS";

// Points the system bus at `address` for the life of the object.
class SystemBusAddress {
public:
    explicit SystemBusAddress(const std::string& address) {
        if (const char* old = std::getenv(BusVariable))
            m_saved = old;
        ::setenv(BusVariable, address.c_str(), 1);
    }
    ~SystemBusAddress() {
        if (m_saved)
            ::setenv(BusVariable, m_saved->c_str(), 1);
        else
            ::unsetenv(BusVariable);
    }
    SystemBusAddress(const SystemBusAddress&) = delete;
    SystemBusAddress& operator=(const SystemBusAddress&) = delete;

private:
    std::optional<std::string> m_saved;
};

// A dbus-daemon of the test's own, listening on a socket in the sandbox.
class PrivateBus {
public:
    explicit PrivateBus(const SandboxRoot& root) : m_socket(root.file("bus/socket")) {
        root.writeFile("bus/bus.conf",
                       "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-BUS Bus Configuration "
                       "1.0//EN\" \"http://www.freedesktop.org/standards/dbus/1.0/"
                       "busconfig.dtd\">\n"
                       "<busconfig><listen>unix:path=" +
                           m_socket +
                           "</listen><auth>EXTERNAL</auth>"
                           "<policy context=\"default\"><allow user=\"*\"/><allow own=\"*\"/>"
                           "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                           "</policy></busconfig>\n");
        const std::string config = "--config-file=" + root.file("bus/bus.conf");
        std::vector<std::string> words = {"dbus-daemon", "--nofork", "--nopidfile", config};
        std::vector<char*> argv;
        for (std::string& word : words)
            argv.push_back(word.data());
        argv.push_back(nullptr);
        if (::posix_spawnp(&m_pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0)
            m_pid = -1;
        m_ready = m_pid != -1 && WaitFor([this] {
                      struct stat st {};
                      return ::stat(m_socket.c_str(), &st) == 0;
                  });
    }
    ~PrivateBus() {
        if (m_pid == -1)
            return;
        ::kill(m_pid, SIGTERM);
        int status = 0;
        ::waitpid(m_pid, &status, 0);
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool ready() const { return m_ready; }
    std::string address() const { return "unix:path=" + m_socket; }

private:
    std::string m_socket;
    pid_t m_pid = -1;
    bool m_ready = false;
};

// org.freedesktop.login1 on the private bus: answers Reboot, or refuses it with `refusal`.
class FakeLogind {
public:
    explicit FakeLogind(std::string refusal = "") : m_refusal(std::move(refusal)) {
        m_thread = std::thread([this] { Serve(); });
        WaitFor([this] { return m_state.load() != 0; });
    }
    ~FakeLogind() {
        m_stop = true;
        m_thread.join();
    }
    FakeLogind(const FakeLogind&) = delete;
    FakeLogind& operator=(const FakeLogind&) = delete;

    bool serving() const { return m_state.load() == 1; }
    int calls() const { return m_calls.load(); }
    int lastInteractive() const { return m_interactive.load(); }

private:
    static int OnCall(sd_bus_message* message, void* self, sd_bus_error* error) {
        auto* logind = static_cast<FakeLogind*>(self);
        if (!sd_bus_message_is_method_call(message, "org.freedesktop.login1.Manager", "Reboot"))
            return 0;
        int interactive = -1;
        if (sd_bus_message_read(message, "b", &interactive) < 0)
            return -EINVAL;
        logind->m_interactive = interactive;
        ++logind->m_calls;
        if (!logind->m_refusal.empty())
            return sd_bus_error_set(error, logind->m_refusal.c_str(), "Not allowed here");
        return sd_bus_reply_method_return(message, "");
    }

    void Serve() {
        sd_bus* bus = nullptr;
        sd_bus_slot* slot = nullptr;
        if (sd_bus_open_system(&bus) < 0 ||
            sd_bus_add_object(bus, &slot, "/org/freedesktop/login1", &OnCall, this) < 0 ||
            sd_bus_request_name(bus, "org.freedesktop.login1", 0) < 0) {
            m_state = 2;
            sd_bus_slot_unref(slot);
            sd_bus_flush_close_unref(bus);
            return;
        }
        m_state = 1;
        while (!m_stop) {
            if (sd_bus_process(bus, nullptr) > 0)
                continue;
            // Wakes for the next message, or to look at the stop flag.
            sd_bus_wait(bus, 50000);
        }
        sd_bus_slot_unref(slot);
        sd_bus_flush_close_unref(bus);
    }

    const std::string m_refusal;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_state{0}; // 0 starting, 1 serving, 2 failed
    std::atomic<int> m_calls{0};
    std::atomic<int> m_interactive{-1};
};

// A systemctl that writes its arguments to "systemctl.args" and exits with `code`.
std::string WriteSystemctl(const SandboxRoot& root, int code) {
    root.writeFile("bin/systemctl", "#!/bin/sh\nprintf '%s|' \"$@\" > '" +
                                        root.file("systemctl.args") + "'\nexit " +
                                        std::to_string(code) + "\n");
    const std::string path = root.file("bin/systemctl");
    ::chmod(path.c_str(), 0755);
    return path;
}

bool HaveDbusDaemon() {
    return ::access("/usr/bin/dbus-daemon", X_OK) == 0 || ::access("/bin/dbus-daemon", X_OK) == 0;
}

TEST(LogindReboot, LogindIsAskedToRebootWithoutInteraction) {
    if (!HaveDbusDaemon())
        GTEST_SKIP() << "dbus-daemon is not installed";
    SandboxRoot root;
    PrivateBus bus(root);
    ASSERT_TRUE(bus.ready());
    SystemBusAddress address(bus.address());
    FakeLogind logind;
    ASSERT_TRUE(logind.serving());
    LogindReboot reboot(WriteSystemctl(root, 0));
    EXPECT_TRUE(reboot.RebootComputer());
    EXPECT_EQ(logind.calls(), 1);
    EXPECT_EQ(logind.lastInteractive(), 0);
    // logind answered: the fallback never ran.
    EXPECT_EQ(SandboxRoot::readFile(root.file("systemctl.args")), "");
}

TEST(LogindReboot, ARefusalByLogindIsFinal) {
    if (!HaveDbusDaemon())
        GTEST_SKIP() << "dbus-daemon is not installed";
    SandboxRoot root;
    PrivateBus bus(root);
    ASSERT_TRUE(bus.ready());
    SystemBusAddress address(bus.address());
    FakeLogind logind(SD_BUS_ERROR_ACCESS_DENIED);
    ASSERT_TRUE(logind.serving());
    LogindReboot reboot(WriteSystemctl(root, 0));
    EXPECT_FALSE(reboot.RebootComputer());
    EXPECT_EQ(logind.calls(), 1);
    EXPECT_EQ(SandboxRoot::readFile(root.file("systemctl.args")), "");
}

TEST(LogindReboot, WithoutLogindOnTheBusSystemctlRebootIsTheFallback) {
    if (!HaveDbusDaemon())
        GTEST_SKIP() << "dbus-daemon is not installed";
    SandboxRoot root;
    PrivateBus bus(root);
    ASSERT_TRUE(bus.ready());
    SystemBusAddress address(bus.address());
    LogindReboot reboot(WriteSystemctl(root, 0));
    EXPECT_TRUE(reboot.RebootComputer());
    EXPECT_EQ(SandboxRoot::readFile(root.file("systemctl.args")), "reboot|");
}

TEST(LogindReboot, WithoutASystemBusSystemctlRebootIsTheFallback) {
    SandboxRoot root;
    SystemBusAddress address("unix:path=" + root.file("no-bus-here"));
    LogindReboot reboot(WriteSystemctl(root, 0));
    EXPECT_TRUE(reboot.RebootComputer());
    EXPECT_EQ(SandboxRoot::readFile(root.file("systemctl.args")), "reboot|");
}

TEST(LogindReboot, AFailingFallbackIsAFailure) {
    SandboxRoot root;
    SystemBusAddress address("unix:path=" + root.file("no-bus-here"));
    LogindReboot reboot(WriteSystemctl(root, 1));
    EXPECT_FALSE(reboot.RebootComputer());
    EXPECT_EQ(SandboxRoot::readFile(root.file("systemctl.args")), "reboot|");
}

TEST(LogindReboot, WithoutLogindAndWithoutSystemctlItFails) {
    SandboxRoot root;
    SystemBusAddress address("unix:path=" + root.file("no-bus-here"));
    LogindReboot reboot(root.file("bin/no-systemctl"));
    EXPECT_FALSE(reboot.RebootComputer());
}

} // namespace
