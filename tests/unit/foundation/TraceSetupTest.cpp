#include "foundation/TraceSetup.h"

#include "foundation/SystemPaths.h"
#include "foundation/Trace.h"

#include "support/SandboxRoot.h"

#include "support/RunInChild.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using TestSupport::SandboxRoot;

void WriteLogKey(const SandboxRoot& root, const std::string& values) {
    root.writeFile("var/lib/velloran/registry/machine.reg",
                   "Windows Registry Editor Version 5.00\r\n\r\n"
                   "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\VLQGSAGui]\r\n" +
                       values);
}

TEST(TraceSetup, WithoutTheKeyTheDefaultsStand) {
    SandboxRoot root;
    const TraceSetup setup = TraceSetup::Read();
    EXPECT_EQ(setup.level, 5u);
    EXPECT_EQ(setup.openMode, 1);
    EXPECT_EQ(setup.maxSize, 0x500000u);
    EXPECT_EQ(setup.path, stdstr::toTString(root.file("tmp/QGSAGui.txt")));
}

TEST(TraceSetup, AbsentValuesTakeTheirDefaults) {
    SandboxRoot root;
    WriteLogKey(root, "\"Other\"=dword:00000001\r\n");
    const TraceSetup setup = TraceSetup::Read();
    EXPECT_EQ(setup.level, 5u);
    EXPECT_EQ(setup.openMode, 1);
    EXPECT_EQ(setup.maxSize, 0x500000u);
    EXPECT_EQ(setup.path, stdstr::toTString(root.file("tmp/QGSAGui.txt")));
}

TEST(TraceSetup, ValuesAreRead) {
    SandboxRoot root;
    WriteLogKey(root, "\"Log Level\"=dword:0000003f\r\n"
                      "\"Log Open Mode\"=dword:00000002\r\n"
                      "\"Log Max Size\"=dword:00200000\r\n"
                      "\"QGSAGuiLogFile\"=\"/var/log/quillgate.txt\"\r\n");
    const TraceSetup setup = TraceSetup::Read();
    EXPECT_EQ(setup.level, 0x3Fu);
    EXPECT_EQ(setup.openMode, 2);
    EXPECT_EQ(setup.maxSize, 0x200000u);
    EXPECT_EQ(setup.path, u"/var/log/quillgate.txt");
}

TEST(TraceSetup, AMaxSizeOfOneIsRaisedTo0x100000) {
    SandboxRoot root;
    WriteLogKey(root, "\"Log Max Size\"=dword:00000001\r\n");
    EXPECT_EQ(TraceSetup::Read().maxSize, 0x100000u);
}

TEST(TraceSetup, AMaxSizeOf0x100000IsKept) {
    SandboxRoot root;
    WriteLogKey(root, "\"Log Max Size\"=dword:00100000\r\n");
    EXPECT_EQ(TraceSetup::Read().maxSize, 0x100000u);
}

TEST(TraceSetup, AnEmptyFileNameCountsAsAbsent) {
    SandboxRoot root;
    WriteLogKey(root, "\"QGSAGuiLogFile\"=\"\"\r\n");
    EXPECT_EQ(TraceSetup::Read().path, stdstr::toTString(root.file("tmp/QGSAGui.txt")));
}

TEST(TraceSetup, LevelZeroMakesNoSink) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  WriteLogKey(root, "\"Log Level\"=dword:00000000\r\n");
                  SetUpLogging();
                  TraceMsg(TRACE_ERROR, u"nowhere");
                  const bool noFile = SandboxRoot::readFile(root.file("tmp/QGSAGui.txt")).empty();
                  return TraceDetail::g_wantedLevels.load() == 0 && noFile ? 0 : 1;
              }),
              0);
}

TEST(TraceSetup, TheDefaultSinkWritesOnlyErrorsAndWarnings) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  SetUpLogging();
                  TraceMsg(TRACE_ERROR, u"an error");
                  TraceMsg(TRACE_WARN, u"a warning");
                  TraceMsg(TRACE_INFO, u"some info");
                  TraceMsg(TRACE_DEBUG, u"a debug line");
                  const std::string bytes = SandboxRoot::readFile(root.file("tmp/QGSAGui.txt"));
                  const std::u16string text(reinterpret_cast<const char16_t*>(bytes.data()),
                                            bytes.size() / 2);
                  const bool ok = text.find(u"Error: an error\r\n") != std::u16string::npos &&
                                  text.find(u"Warn: a warning\r\n") != std::u16string::npos &&
                                  text.find(u"some info") == std::u16string::npos &&
                                  text.find(u"a debug line") == std::u16string::npos;
                  return ok ? 0 : 1;
              }),
              0);
}

// The open mode read from the store reaches the file: 2 empties it at start and writes a
// fresh mark, 1 keeps what it holds.
TEST(TraceSetup, TheOpenModeDecidesWhetherTheFileIsKeptAtStart) {
    for (const std::uint32_t mode : {1u, 2u}) {
        EXPECT_EQ(TestSupport::RunInChild([mode] {
                      SandboxRoot root;
                      WriteLogKey(root, "\"Log Open Mode\"=dword:0000000" + std::to_string(mode) +
                                            "\r\n");
                      const std::u16string old = u"\xFEFFold line\r\n";
                      root.writeFile(
                          "tmp/QGSAGui.txt",
                          std::string(reinterpret_cast<const char*>(old.data()), old.size() * 2));
                      SetUpLogging();
                      TraceMsg(TRACE_ERROR, u"new line");
                      const std::string bytes = SandboxRoot::readFile(root.file("tmp/QGSAGui.txt"));
                      const std::u16string text(reinterpret_cast<const char16_t*>(bytes.data()),
                                                bytes.size() / 2);
                      const bool kept = text.starts_with(u"\xFEFFold line\r\n");
                      const bool fresh = text.starts_with(u"\xFEFF") && !kept &&
                                         text.find(u"\xFEFF", 1) == std::u16string::npos;
                      const bool written = text.ends_with(u"Error: new line\r\n");
                      return written && (mode == 1 ? kept : fresh) ? 0 : 1;
                  }),
                  0)
            << "open mode " << mode;
    }
}

} // namespace
