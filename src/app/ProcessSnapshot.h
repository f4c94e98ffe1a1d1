#pragma once
// The processes of the system at one moment, from the proc file system, for a walk such as
// KillGUI's: ids in ascending order, each with its image name. The name is the file name of
// the process's executable ("exe"), or its command name ("comm") where the executable cannot
// be read (another user's process, a kernel thread). A process that is gone by the time its
// turn comes is passed over, as a snapshot taken a moment later would not hold it.

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class ProcessSnapshot {
public:
    // Windows' ERROR_NO_MORE_FILES: the walk has come to its end.
    static constexpr int NoMoreFiles = 18;

    struct Entry {
        pid_t pid = 0;
        std::string name; // UTF-8
    };

    // `procRoot` is the mount point of the proc file system; tests give a folder of their own.
    explicit ProcessSnapshot(std::string procRoot = "/proc");
    ~ProcessSnapshot();
    ProcessSnapshot(const ProcessSnapshot&) = delete;
    ProcessSnapshot& operator=(const ProcessSnapshot&) = delete;

    // Lists the processes. False with `error` (an errno) when the folder cannot be read.
    bool Take(int& error);
    // The handle of the snapshot (the folder's descriptor), -1 before Take.
    int Handle() const;
    // The next entry. False at the end, with `error` NoMoreFiles, or the errno with which the
    // listing broke off.
    bool Next(Entry& entry, int& error);
    void Close();

    // The image name of process `pid` below `procRoot`, empty when it has none any more.
    static std::string ImageName(const std::string& procRoot, pid_t pid);
    // The value of `variable` in the environment that process `pid` was started with;
    // nothing when it has none or the environment cannot be read.
    static std::optional<std::string> EnvironmentValue(const std::string& procRoot, pid_t pid,
                                                       const std::string& variable);

private:
    std::string m_procRoot;
    void* m_folder = nullptr; // DIR*
    std::vector<pid_t> m_pids;
    std::size_t m_next = 0;
    int m_listError = 0;
};
