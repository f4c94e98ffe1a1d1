#pragma once
// The real quillgate in a sandbox root, as it is installed: the program, the plug-in, the
// service's executable and the language files in one folder ($ROOT/opt/quillgate), the
// service installed for the file backend, the trace log at debug level, the offscreen
// platform, and every message box recorded in $ROOT/boxes.txt instead of being shown (see
// SandboxMessageBoxes). Copies of the program run in the background while a test talks to
// them; each is ended at the end of the test if it has not ended by then.

#include "ServiceSandbox.h"

#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

class ProgramSandbox : public ServiceSandbox {
protected:
    static constexpr const char* LogLevelDebug = "0000003f";

    void SetUp() override {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::setenv("QUILLGATE_MESSAGE_BOX_LOG", sandbox.file("boxes.txt").c_str(), 1);
        ::unsetenv("XDG_ACTIVATION_TOKEN");
        ::unsetenv("QUILLGATE_SERVICE_PROGRAM");
        WriteMachineStore(LogLevelDebug, "");
        sandbox.writeFile("etc/systemd/system/VelloranQuillgateSvc.service", "[Service]\n");
    }

    void TearDown() override {
        for (const pid_t pid : m_running) {
            ::kill(pid, SIGKILL);
            int status = 0;
            ::waitpid(pid, &status, 0);
        }
        m_running.clear();
        ServiceSandbox::TearDown();
        ::unsetenv("QUILLGATE_MESSAGE_BOX_LOG");
    }

    static bool HavePlugin() {
#ifdef QGPLUGIN_PATH
        return true;
#else
        return false;
#endif
    }

    // The machine store: the trace log's level and any further lines of the program's key.
    void WriteMachineStore(const std::string& logLevel, const std::string& quillgateValues) {
        sandbox.writeFile("var/lib/velloran/registry/machine.reg",
                          "Windows Registry Editor Version 5.00\r\n\r\n"
                          "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\VLQGSAGui]\r\n"
                          "\"Log Level\"=dword:" +
                              logLevel +
                              "\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\Quillgate]\r\n" +
                              quillgateValues);
    }

    // Copies the program and what lies beside it; the plug-in only when asked.
    void InstallProgram(bool withPlugin = true) {
        namespace fs = std::filesystem;
        const fs::path folder = ProgramFolder();
        fs::create_directories(folder);
#ifdef QUILLGATE_PATH
        fs::copy_file(QUILLGATE_PATH, folder / "quillgate", fs::copy_options::overwrite_existing);
#endif
        fs::copy_file(QGSASVC_PATH, folder / "qgsasvc", fs::copy_options::overwrite_existing);
#ifdef QGPLUGIN_PATH
        if (withPlugin)
            fs::copy_file(QGPLUGIN_PATH, folder / "libQGPlugin.so",
                          fs::copy_options::overwrite_existing);
#else
        static_cast<void>(withPlugin);
#endif
        fs::copy(std::string(QG_SOURCE_DIR) + "/resources/QGSaLangs", folder / "QGSaLangs",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }

    std::string ProgramFolder() const {
        return sandbox.file("opt/quillgate");
    }
    std::string Program() const {
        return ProgramFolder() + "/quillgate";
    }

    // Starts the program in the background, with `environment` added to the test's own.
    pid_t StartProgram(const std::vector<std::string>& arguments,
                       const std::map<std::string, std::string>& environment = {},
                       const std::string& program = std::string()) {
        const std::string file = program.empty() ? Program() : program;
        const std::string output = sandbox.file("program-" + std::to_string(m_started++) + ".txt");
        std::fflush(nullptr);
        const pid_t pid = ::fork();
        if (pid == 0) {
            for (const auto& [name, value] : environment)
                ::setenv(name.c_str(), value.c_str(), 1);
            const int out = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
            if (out >= 0) {
                ::dup2(out, STDOUT_FILENO);
                ::dup2(out, STDERR_FILENO);
            }
            std::vector<char*> argv;
            argv.push_back(const_cast<char*>(file.c_str()));
            for (const std::string& argument : arguments)
                argv.push_back(const_cast<char*>(argument.c_str()));
            argv.push_back(nullptr);
            ::execv(file.c_str(), argv.data());
            ::_exit(127);
        }
        if (pid > 0)
            m_running.push_back(pid);
        return pid;
    }

    // The exit code of a program started here, as the shell reports it (128 + the signal
    // for one that a signal ended); -1 when it has not ended within `deadline`.
    int WaitForExit(pid_t pid, std::chrono::milliseconds deadline = std::chrono::seconds(30)) {
        int status = 0;
        bool ended = false;
        TestSupport::WaitFor(
            [&] {
                ended = ::waitpid(pid, &status, WNOHANG) == pid;
                return ended;
            },
            deadline);
        if (!ended)
            return -1;
        std::erase(m_running, pid);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    // Alive and not yet ended (a process that has ended waits as a zombie for its status).
    static bool IsRunning(pid_t pid) {
        std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
        std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
        const std::size_t close = text.rfind(')');
        return close != std::string::npos && close + 2 < text.size() && text[close + 2] != 'Z';
    }

    // The trace log's lines (it is UTF-16LE), without their date, time and thread:
    // "Info: Quillgate starting up... ".
    std::vector<std::string> TraceLines() const {
        const std::string bytes =
            TestSupport::SandboxRoot::readFile(sandbox.file("tmp/QGSAGui.txt"));
        std::u16string text;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                                 (static_cast<unsigned char>(bytes[i + 1]) << 8)));
        std::vector<std::string> lines;
        std::string line;
        const auto finish = [&] {
            // "<date> <time> <thread>: <label>: <text>"
            const std::size_t colon = line.find(": ");
            if (colon != std::string::npos)
                lines.push_back(line.substr(colon + 2));
            line.clear();
        };
        for (const char16_t c : text) {
            if (c == u'\n') {
                finish();
            } else if (c != u'\r' && c != u'\xFEFF') {
                // The texts that tests look for are ASCII.
                line.push_back(c < 0x80 ? static_cast<char>(c) : '?');
            }
        }
        if (!line.empty())
            finish();
        return lines;
    }

    std::size_t CountTrace(const std::string& line) const {
        const auto lines = TraceLines();
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
    }

    bool WaitForTrace(const std::string& line, std::size_t times = 1,
                      std::chrono::milliseconds deadline = std::chrono::seconds(30)) const {
        return TestSupport::WaitFor([&] { return CountTrace(line) >= times; }, deadline);
    }

    std::vector<std::string> BoxLines() const {
        std::istringstream text(TestSupport::SandboxRoot::readFile(sandbox.file("boxes.txt")));
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

    bool TraceFileExists() const {
        return std::filesystem::exists(sandbox.file("tmp/QGSAGui.txt"));
    }

private:
    std::vector<pid_t> m_running;
    int m_started = 0;
};
