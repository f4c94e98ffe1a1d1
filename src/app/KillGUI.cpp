#include "app/KillGUI.h"

#include "app/PidfdProcessControl.h"
#include "app/ProcessSnapshot.h"
#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace {

// The words of the walk's failures name the Windows calls they stand for, so that the log
// reads alike on every system; the numbers are errno values.
constexpr const char16_t* SnapshotFailed =
    u"KillQuillgate GUI(): CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS) failed, error (%d)";
constexpr const char16_t* ProcessNameIs = u"Kill Quillgate GUI(): Process name is (%s)";
// The flag that tells the first walk call from the later ones is set before the first call,
// so the first wording is never written; it is kept with its sibling all the same.
[[maybe_unused]] constexpr const char16_t* FirstFailed =
    u"Kill Quillgate GUI(): Process32First(0x%I64x) failed, error (%d)";
constexpr const char16_t* NextFailed =
    u"Kill Quillgate GUI(): Process32Next(0x%I64x) failed, error (%d)";
constexpr const char16_t* FoundProcess = u"Kill Quillgate GUI(): Found Quillgate GUI process";
constexpr const char16_t* OpenFailed = u"Kill Quillgate GUI(): OpenProcess(%d) failed, error (%d)";
constexpr const char16_t* TerminateFailed =
    u"Kill Quillgate GUI(): TerminateProcess(0x%I64x) failed, error (%d)";
constexpr const char16_t* OtherRoot =
    u"Kill Quillgate GUI(): Process (%d) runs under another sandbox root, left alone";
constexpr const char16_t* NoLongerProgram =
    u"Kill Quillgate GUI(): Process (%d) is no longer Quillgate, left alone";
constexpr const char16_t* NoneFound = u"KillGUI cannot find Quillgate GUI instance";

PidfdProcessControl& SystemControl() {
    static PidfdProcessControl control;
    return control;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::uint64_t Widened(int handle) {
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(handle));
}

} // namespace

KillGUI::KillGUI() : KillGUI("/proc", SystemControl(), SystemPaths::Root()) {}

KillGUI::KillGUI(std::string procRoot, ProcessControl& control, std::string sandboxRoot)
    : m_procRoot(std::move(procRoot)), m_sandboxRoot(std::move(sandboxRoot)), m_control(control) {}

std::string_view KillGUI::WithoutTrailingSlashes(std::string_view path) {
    while (!path.empty() && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

bool KillGUI::BelongsHere(pid_t pid) const {
    if (m_sandboxRoot.empty())
        return true;
    const std::optional<std::string> root =
        ProcessSnapshot::EnvironmentValue(m_procRoot, pid, "QUILLGATE_ROOT");
    // "/tmp/a/" and "/tmp/a" name the same root.
    return root && WithoutTrailingSlashes(*root) == WithoutTrailingSlashes(m_sandboxRoot);
}

bool KillGUI::IsProgramImage(const std::string& name) {
    const std::string_view wanted(ImageName);
    if (name.size() != wanted.size())
        return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (Lower(name[i]) != Lower(wanted[i]))
            return false;
    }
    return true;
}

void KillGUI::Run() {
    bool found = false;
    ProcessSnapshot snapshot(m_procRoot);
    int error = 0;
    if (!snapshot.Take(error)) {
        TraceFmt(TRACE_ERROR, SnapshotFailed, error);
        TraceMsg(TRACE_ERROR, NoneFound);
        return;
    }

    ProcessSnapshot::Entry entry;
    for (;;) {
        if (!snapshot.Next(entry, error)) {
            if (error != ProcessSnapshot::NoMoreFiles)
                TraceFmt(TRACE_ERROR, NextFailed, Widened(snapshot.Handle()), error);
            break;
        }
        TraceFmt(TRACE_DEBUG, ProcessNameIs, stdstr::toTString(entry.name));
        if (!IsProgramImage(entry.name))
            continue;

        TraceMsg(TRACE_DEBUG, FoundProcess);
        const int handle = m_control.OpenProcess(entry.pid, error);
        if (handle < 0) {
            TraceFmt(TRACE_ERROR, OpenFailed, static_cast<int>(entry.pid), error);
            continue;
        }
        // The handle holds the process that has the id now; the id may have been given to
        // another process since the snapshot read its name. So the name and the root are
        // read again while the handle is open: a process that ended meanwhile and whose id
        // was taken again fails these checks, or leaves the handle to a process that is gone.
        if (!IsProgramImage(ProcessSnapshot::ImageName(m_procRoot, entry.pid))) {
            TraceFmt(TRACE_DEBUG, NoLongerProgram, static_cast<int>(entry.pid));
            m_control.CloseHandle(handle);
            continue;
        }
        if (!BelongsHere(entry.pid)) {
            TraceFmt(TRACE_DEBUG, OtherRoot, static_cast<int>(entry.pid));
            m_control.CloseHandle(handle);
            continue;
        }
        if (m_control.TerminateProcess(handle, entry.pid, error))
            found = true;
        else
            TraceFmt(TRACE_ERROR, TerminateFailed, Widened(handle), error);
        m_control.CloseHandle(handle);
    }
    snapshot.Close();

    if (!found)
        TraceMsg(TRACE_ERROR, NoneFound);
}
