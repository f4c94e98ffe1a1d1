#include "app/SupervisionTypes.h"

#include "localisation/QGEntString.h"

#include <thread>

stdstr TranslatedString(std::uint32_t id) {
    return QGEntString(id).GetString();
}

void SystemSleep(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}
