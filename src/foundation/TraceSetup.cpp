#include "foundation/TraceSetup.h"

#include "foundation/CRegistry.h"
#include "foundation/CTraceFileLog.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"

#include <memory>
#include <new>

stdstr TraceSetup::DefaultPath() {
    return stdstr::toTString(SystemPaths::TempFolder() + "QGSAGui.txt");
}

TraceSetup TraceSetup::Read() {
    TraceSetup setup;
    setup.path = DefaultPath();
    CRegistry key;
    if (!key.Open(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Velloran\\VLQGSAGui", KEY_READ, false))
        return setup;
    std::uint32_t number = 0;
    if (key.getNumber(u"Log Level", number))
        setup.level = number;
    if (key.getNumber(u"Log Open Mode", number))
        setup.openMode = static_cast<int>(number);
    if (key.getNumber(u"Log Max Size", number))
        setup.maxSize = number < SmallestMaxSize ? SmallestMaxSize : number;
    stdstr file;
    if (key.getString(u"QGSAGuiLogFile", file) && !file.empty())
        setup.path = file;
    return setup;
}

void SetUpLogging() {
    const TraceSetup setup = TraceSetup::Read();
    if (setup.level == 0)
        return;
    // Without memory for the sink the program starts all the same, without a log.
    try {
        auto sink = std::make_unique<CTraceFileLog>(setup.path.c_str(), true, setup.openMode,
                                                    setup.maxSize);
        sink->SetLevel(setup.level);
        TraceAddModule(std::move(sink));
    } catch (const std::bad_alloc&) {
    }
}
