#pragma once
// A stand-in for systemd's manager on a test's private bus: it owns
// "org.freedesktop.systemd1", answers Manager.LoadUnit with the unit's object path (as
// systemd does, also for a unit it does not know) and serves each unit's LoadState and
// ActiveState. It runs on a thread of its own, with its own connection.

#include <systemd/sd-bus.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <future>
#include <map>
#include <mutex>
#include <poll.h>
#include <string>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>
#include <vector>

class FakeSystemd {
public:
    struct Unit {
        std::string loadState = "loaded";
        std::string activeState = "inactive";
        bool loadStateFails = false;
        bool activeStateFails = false;
    };

    // Connected and owning the name when the constructor returns, if ready() says so.
    explicit FakeSystemd(const std::string& address) : m_stop(::eventfd(0, EFD_CLOEXEC)) {
        std::promise<bool> started;
        std::future<bool> isStarted = started.get_future();
        m_thread = std::thread([this, address, &started] { run(address, started); });
        m_ready = isStarted.get();
    }

    ~FakeSystemd() {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(m_stop, &one, sizeof one);
        m_thread.join();
        ::close(m_stop);
    }

    FakeSystemd(const FakeSystemd&) = delete;
    FakeSystemd& operator=(const FakeSystemd&) = delete;

    bool ready() const { return m_ready; }

    // The unit "<name>"; units not set are "not-found" and "inactive", as systemd reports
    // a unit without a unit file.
    void setUnit(const std::string& name, const Unit& unit) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_units[name] = unit;
    }
    void denyLoadUnit(bool deny) { m_denyLoadUnit = deny; }

    // The unit names that LoadUnit was asked for, in order.
    std::vector<std::string> loadedNames() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_loaded;
    }

private:
    static constexpr const char* UnitPrefix = "/org/freedesktop/systemd1/unit";

    Unit unitAt(const char* path) {
        char* name = nullptr;
        Unit unit;
        unit.loadState = "not-found";
        if (sd_bus_path_decode(path, UnitPrefix, &name) > 0 && name) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            const auto found = m_units.find(name);
            if (found != m_units.end())
                unit = found->second;
        }
        std::free(name);
        return unit;
    }

    static int LoadUnit(sd_bus_message* message, void* userdata, sd_bus_error* error) {
        auto* self = static_cast<FakeSystemd*>(userdata);
        const char* name = nullptr;
        int result = sd_bus_message_read(message, "s", &name);
        if (result < 0)
            return result;
        {
            const std::lock_guard<std::mutex> lock(self->m_mutex);
            self->m_loaded.emplace_back(name);
        }
        if (self->m_denyLoadUnit)
            return sd_bus_error_set(error, SD_BUS_ERROR_ACCESS_DENIED, "Access denied");
        char* path = nullptr;
        result = sd_bus_path_encode(UnitPrefix, name, &path);
        if (result < 0)
            return result;
        result = sd_bus_reply_method_return(message, "o", path);
        std::free(path);
        return result;
    }

    static int LoadState(sd_bus*, const char* path, const char*, const char*, sd_bus_message* reply,
                         void* userdata, sd_bus_error* error) {
        const Unit unit = static_cast<FakeSystemd*>(userdata)->unitAt(path);
        if (unit.loadStateFails)
            return sd_bus_error_set(error, SD_BUS_ERROR_ACCESS_DENIED, "No LoadState for you");
        return sd_bus_message_append(reply, "s", unit.loadState.c_str());
    }

    static int ActiveState(sd_bus*, const char* path, const char*, const char*,
                           sd_bus_message* reply, void* userdata, sd_bus_error* error) {
        const Unit unit = static_cast<FakeSystemd*>(userdata)->unitAt(path);
        if (unit.activeStateFails)
            return sd_bus_error_set(error, SD_BUS_ERROR_ACCESS_DENIED, "No ActiveState for you");
        return sd_bus_message_append(reply, "s", unit.activeState.c_str());
    }

    void run(const std::string& address, std::promise<bool>& started) {
        static const sd_bus_vtable managerTable[] = {
            SD_BUS_VTABLE_START(0),
            SD_BUS_METHOD("LoadUnit", "s", "o", &FakeSystemd::LoadUnit, SD_BUS_VTABLE_UNPRIVILEGED),
            SD_BUS_VTABLE_END};
        static const sd_bus_vtable unitTable[] = {
            SD_BUS_VTABLE_START(0),
            SD_BUS_PROPERTY("LoadState", "s", &FakeSystemd::LoadState, 0, 0),
            SD_BUS_PROPERTY("ActiveState", "s", &FakeSystemd::ActiveState, 0, 0),
            SD_BUS_VTABLE_END};

        sd_bus* bus = nullptr;
        bool ok =
            sd_bus_new(&bus) >= 0 && sd_bus_set_address(bus, address.c_str()) >= 0 &&
            sd_bus_set_bus_client(bus, 1) >= 0 && sd_bus_start(bus) >= 0 &&
            sd_bus_add_object_vtable(bus, nullptr, "/org/freedesktop/systemd1",
                                     "org.freedesktop.systemd1.Manager", managerTable, this) >= 0 &&
            sd_bus_add_fallback_vtable(bus, nullptr, UnitPrefix, "org.freedesktop.systemd1.Unit",
                                       unitTable, nullptr, this) >= 0 &&
            sd_bus_request_name(bus, "org.freedesktop.systemd1", 0) >= 0;
        started.set_value(ok);
        while (ok) {
            const int processed = sd_bus_process(bus, nullptr);
            if (processed < 0)
                break;
            if (processed > 0)
                continue;
            pollfd fds[2] = {{sd_bus_get_fd(bus), static_cast<short>(sd_bus_get_events(bus)), 0},
                             {m_stop, POLLIN, 0}};
            std::uint64_t until = 0;
            int timeout = -1;
            if (sd_bus_get_timeout(bus, &until) >= 0 && until != UINT64_MAX) {
                timespec now{};
                ::clock_gettime(CLOCK_MONOTONIC, &now);
                const std::uint64_t nowUs = static_cast<std::uint64_t>(now.tv_sec) * 1000000u +
                                            static_cast<std::uint64_t>(now.tv_nsec) / 1000u;
                timeout = until > nowUs ? static_cast<int>((until - nowUs + 999) / 1000) : 0;
            }
            if (::poll(fds, 2, timeout) < 0 && errno != EINTR)
                break;
            if (fds[1].revents != 0)
                break;
        }
        if (bus)
            sd_bus_flush_close_unref(bus);
    }

    int m_stop;
    std::thread m_thread;
    bool m_ready = false;
    std::atomic<bool> m_denyLoadUnit{false};
    std::mutex m_mutex;
    std::map<std::string, Unit> m_units;
    std::vector<std::string> m_loaded;
};
