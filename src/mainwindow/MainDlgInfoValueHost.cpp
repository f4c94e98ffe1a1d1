#include "mainwindow/MainDlgInfoValueHost.h"

#include "mainwindow/IMainWindowHost.h"

MainDlgInfoValueHost::MainDlgInfoValueHost(IMainWindowHost& host, std::function<void(int)> command)
    : m_host(host), m_command(std::move(command)) {}

void MainDlgInfoValueHost::SetFlagByte(int code, std::uint8_t value) {
    m_host.SetFlagByte(code, value);
}

std::int32_t MainDlgInfoValueHost::UpdateAction() {
    return m_host.UpdateAction();
}

void MainDlgInfoValueHost::SetUpdateAction(std::int32_t action) {
    m_host.SetUpdateAction(action);
}

std::int32_t MainDlgInfoValueHost::GetNumber(Number setting) {
    return m_host.GetNumber(setting);
}

void MainDlgInfoValueHost::SetNumber(Number setting, std::int32_t value) {
    m_host.SetNumber(setting, value);
}

const stdstr& MainDlgInfoValueHost::GetText(Text setting) {
    return m_host.GetText(setting);
}

void MainDlgInfoValueHost::SetText(Text setting, const stdstr& value) {
    m_host.SetText(setting, value);
}

bool MainDlgInfoValueHost::SetFilterState(std::int32_t value) {
    return m_host.SetFilterState(value);
}

void MainDlgInfoValueHost::RunFreshUpdate(std::int32_t mode) {
    m_host.RunFreshUpdate(mode);
}

void MainDlgInfoValueHost::NotifyService() {
    m_host.NotifyService();
}

void MainDlgInfoValueHost::Command(int id) {
    if (m_command)
        m_command(id);
}

bool MainDlgInfoValueHost::ReadFileVersion(const stdstr& path,
                                           std::array<std::uint32_t, 4>& version) {
    return m_host.ReadFileVersion(path, version);
}
