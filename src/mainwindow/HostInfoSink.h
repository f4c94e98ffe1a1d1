#pragma once
// The host's IInfoSink, a base of the main window: the plug-in may call it, and every call
// gets its fixed answer. Nothing of the program listens here; the reference value is a
// constant, since the plug-in never owns the main window.

#include "mainwindow/PluginContract.h"

class HostInfoSink : public IInfoSink {
public:
    static constexpr std::uint32_t ReferenceValue = 1;

    std::int32_t Reserved1(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                           std::uint32_t fourth, std::uint32_t fifth) override;
    std::uint32_t Reserved2() override;
    std::uint32_t Reserved3() override;
    std::int32_t Reserved4() override;
    std::int32_t Reserved5() override;
    std::int32_t Reserved6() override;
};
