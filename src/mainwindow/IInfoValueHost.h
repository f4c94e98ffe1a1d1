#pragma once
// What the answers to the plug-in's set and get requests (messages 1051 and 1052) reach:
// the settings, the application object's update action and flag bytes, the filter switch,
// the update run, the service notice, the Address List button, and the version of a file.

#include "foundation/stdstr.h"

#include <array>
#include <cstdint>

class IInfoValueHost {
public:
    enum class Number { FilterOn, AutoUpgrade, UpgradePeriod, HistoryDays };
    enum class Text { ConfigPath, Language };

    // The application object's two flag bytes (codes 1 and 2); nothing reads them.
    virtual void SetFlagByte(int code, std::uint8_t value) = 0;
    virtual std::int32_t UpdateAction() = 0;
    virtual void SetUpdateAction(std::int32_t action) = 0;

    virtual std::int32_t GetNumber(Number setting) = 0;
    virtual void SetNumber(Number setting, std::int32_t value) = 0;
    // The text stays where it is until it is next changed: the plug-in gets a pointer to it.
    virtual const stdstr& GetText(Text setting) = 0;
    virtual void SetText(Text setting, const stdstr& value) = 0;

    // SetFilterState: 1 asks and turns filtering off, anything else turns it on.
    virtual bool SetFilterState(std::int32_t value) = 0;
    virtual void RunFreshUpdate(std::int32_t mode) = 0;
    // Sends the whole settings to the service.
    virtual void NotifyService() = 0;
    // As the main window's WM_COMMAND with `id` and notification 0.
    virtual void Command(int id) = 0;

    // The four numbers of the file's version; false when it has none or can't be read.
    virtual bool ReadFileVersion(const stdstr& path, std::array<std::uint32_t, 4>& version) = 0;

    virtual ~IInfoValueHost() = default;

protected:
    IInfoValueHost() = default;
    IInfoValueHost(const IInfoValueHost&) = default;
    IInfoValueHost& operator=(const IInfoValueHost&) = default;
};
