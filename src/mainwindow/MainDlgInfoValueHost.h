#pragma once
// What the answers to the plug-in's set and get requests reach from the main window: the
// application object for everything, except the Address List click of set code 8, which
// the window takes itself before the application object would see it.

#include "mainwindow/IInfoValueHost.h"

#include <functional>

class IMainWindowHost;

class MainDlgInfoValueHost : public IInfoValueHost {
public:
    // `command` runs a WM_COMMAND of the window with notification 0.
    MainDlgInfoValueHost(IMainWindowHost& host, std::function<void(int)> command);

    void SetFlagByte(int code, std::uint8_t value) override;
    std::int32_t UpdateAction() override;
    void SetUpdateAction(std::int32_t action) override;
    std::int32_t GetNumber(Number setting) override;
    void SetNumber(Number setting, std::int32_t value) override;
    const stdstr& GetText(Text setting) override;
    void SetText(Text setting, const stdstr& value) override;
    bool SetFilterState(std::int32_t value) override;
    void RunFreshUpdate(std::int32_t mode) override;
    void NotifyService() override;
    void Command(int id) override;
    bool ReadFileVersion(const stdstr& path, std::array<std::uint32_t, 4>& version) override;

private:
    IMainWindowHost& m_host;
    std::function<void(int)> m_command;
};
