#pragma once
// The keys of section "SYSTEM" of QGConfig.ini: what the program reads into its settings and
// sends back with every change. The defaults are those the program assumes for a missing key.

#include "foundation/stdstr.h"
#include "service/FieldMessage.h"

#include <cstdint>
#include <vector>

class enumMSG_CONFIG_CHANGE_Message;

struct SystemSettings {
    std::int32_t firstRun = 1;
    std::int32_t filterOn = 1;
    std::int32_t autoUpgrade = 1;
    std::int32_t showCloseWindow = 1;
    std::int32_t upgradePeriod = 5;
    std::int32_t historyDays = 30;
    stdstr configPath;
    stdstr language;

    static SystemSettings of(const enumMSG_CONFIG_CHANGE_Message& message);
    // A Config change message carrying these settings, from process `pid`.
    void fill(enumMSG_CONFIG_CHANGE_Message& message, std::int32_t pid) const;
    // The fields of that message, in wire order.
    std::vector<FieldValue> fields(std::int32_t pid) const;

    bool operator==(const SystemSettings&) const = default;
};
