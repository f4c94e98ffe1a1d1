// The entry's first step sets up the trace log from the machine store (SetUpLogging). Each
// case runs in a child process of its own, since a process sets up its log once.

#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"
#include "foundation/TraceSetup.h"

#include "support/RunInChild.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using TestSupport::SandboxRoot;

void WriteLogKey(const SandboxRoot& root, const std::string& values) {
    root.writeFile("var/lib/velloran/registry/machine.reg",
                   "Windows Registry Editor Version 5.00\r\n\r\n"
                   "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\VLQGSAGui]\r\n" +
                       values);
}

std::string LogPath(const SandboxRoot& root) {
    return root.file("tmp/QGSAGui.txt");
}

TEST(TraceLogSetup, ALogLevelOfZeroGivesASilentProgram) {
    SandboxRoot root;
    WriteLogKey(root, "\"Log Level\"=dword:00000000\r\n");
    const int code = TestSupport::RunInChild([&] {
        SetUpLogging();
        TraceMsg(TRACE_ERROR, u"an error nobody reads");
        TraceMsg(TRACE_WARN, u"Got shut down GUI command, shut down it");
        // No sink wants anything, so every trace call stops at the first test.
        if (TraceDetail::g_wantedLevels.load() != 0)
            return 2;
        return fs::exists(LogPath(root)) ? 3 : 0;
    });
    EXPECT_EQ(code, 0);
}

TEST(TraceLogSetup, WithoutTheKeyTheLevelIsFive) {
    SandboxRoot root;
    const int code = TestSupport::RunInChild([&] {
        SetUpLogging();
        TraceMsg(TRACE_WARN, u"warned");
        TraceMsg(TRACE_DEBUG, u"debugged");
        if (TraceDetail::g_wantedLevels.load() != 5)
            return 2;
        return fs::exists(LogPath(root)) ? 0 : 3;
    });
    EXPECT_EQ(code, 0);
}

TEST(TraceLogSetup, AMaxSizeOf0x80000IsRaisedTo0x100000) {
    SandboxRoot root;
    WriteLogKey(root, "\"Log Max Size\"=dword:00080000\r\n");
    EXPECT_EQ(TraceSetup::Read().maxSize, 0x100000u);

    // The file itself: it grows past the asked-for half mebibyte and is kept within the
    // raised limit.
    const int code = TestSupport::RunInChild([&] {
        SetUpLogging();
        const std::u16string line(500, u'x');
        std::uintmax_t largest = 0;
        for (int i = 0; i < 1500; ++i) {
            TraceMsg(TRACE_ERROR, line);
            largest = std::max(largest, fs::file_size(LogPath(root)));
        }
        if (largest <= 0x80000 + 0x10000)
            return 2; // rolled at the asked-for size
        if (largest > 0x100000 + 0x1000)
            return 3; // not kept within the limit
        return 0;
    });
    EXPECT_EQ(code, 0);
}

TEST(TraceLogSetup, AnAbsentMaxSizeIs0x500000) {
    SandboxRoot root;
    WriteLogKey(root, "\"Log Level\"=dword:00000005\r\n");
    EXPECT_EQ(TraceSetup::Read().maxSize, 0x500000u);
}

TEST(TraceLogSetup, WithoutTheKeyTheMaxSizeIs0x500000) {
    SandboxRoot root;
    EXPECT_EQ(TraceSetup::Read().maxSize, 0x500000u);
}

} // namespace
