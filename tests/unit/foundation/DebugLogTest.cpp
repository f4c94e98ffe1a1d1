#include "foundation/DebugLog.h"

#include "foundation/SystemPaths.h"

#include "support/SandboxRoot.h"

#include "support/RunInChild.h"

#include <gtest/gtest.h>

#include <ctime>
#include <regex>

namespace {

using TestSupport::SandboxRoot;

void WriteDebugOutputValue(const SandboxRoot& root, const std::string& valueLine) {
    root.writeFile("var/lib/velloran/registry/machine.reg",
                   "Windows Registry Editor Version 5.00\r\n\r\n"
                   "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n" +
                       valueLine + "\r\n");
}

// The log decides once per process whether it is on, so each case runs in a child.
TEST(DebugLog, ThePathIsTheTemporaryFolderAndTheProgramName) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  const std::string expected =
                      root.file("tmp/QGDebugLog_") + SystemPaths::ProgramFileName() + ".txt";
                  return DebugLogPath() == expected ? 0 : 1;
              }),
              0);
}

TEST(DebugLog, WithoutDebugOutputNothingIsWritten) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  DebugLogPrintf("Thread::stop %d\n", 4);
                  return SandboxRoot::readFile(DebugLogPath()).empty() ? 0 : 1;
              }),
              0);
}

TEST(DebugLog, AnEmptyStringValueSwitchesItOn) {
    EXPECT_EQ(
        TestSupport::RunInChild([] {
            SandboxRoot root;
            WriteDebugOutputValue(root, "\"DebugOutput\"=\"\"");
            DebugLogPrintf("Mutex: %s %s Mutex\n", "Created", "VelloranQuillgate");
            const std::string text = SandboxRoot::readFile(DebugLogPath());
            const std::regex line(
                R"(\d+/\d+/\d+  \d+:\d+:\d+:\d+ \| \d+ \| Mutex: Created VelloranQuillgate Mutex\n)");
            return std::regex_match(text, line) ? 0 : 1;
        }),
        0);
}

TEST(DebugLog, AnEmptyValueOfAnyTypeSwitchesItOn) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  WriteDebugOutputValue(root, "\"DebugOutput\"=hex:");
                  DebugLogPrintf("x\n");
                  return SandboxRoot::readFile(DebugLogPath()).empty() ? 1 : 0;
              }),
              0);
}

TEST(DebugLog, TimesAreUtcWithUnpaddedFields) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  ::setenv("TZ", "Pacific/Kiritimati", 1); // fourteen hours from UTC
                  ::tzset();
                  WriteDebugOutputValue(root, "\"DebugOutput\"=dword:00000001");
                  const std::time_t before = std::time(nullptr);
                  DebugLogPrintf("a %S b\n", u"wide");
                  const std::time_t after = std::time(nullptr);
                  const std::string text = SandboxRoot::readFile(DebugLogPath());
                  std::smatch m;
                  const std::regex line(
                      R"((\d+)/(\d+)/(\d+)  (\d+):(\d+):(\d+):(\d+) \| (\d+) \| a wide b\n)");
                  if (!std::regex_match(text, m, line))
                      return 2;
                  std::tm utc{};
                  std::tm utcAfter{};
                  ::gmtime_r(&before, &utc);
                  ::gmtime_r(&after, &utcAfter);
                  const int hour = std::stoi(m[4]);
                  const bool unpadded = m[2].str()[0] != '0' && m[4].str().size() <= 2;
                  return (hour == utc.tm_hour || hour == utcAfter.tm_hour) &&
                                 std::stoi(m[1]) == utc.tm_year + 1900 && unpadded
                             ? 0
                             : 1;
              }),
              0);
}

TEST(DebugLog, EachMessageIsAppended) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  WriteDebugOutputValue(root, "\"DebugOutput\"=\"1\"");
                  DebugLogPrintf("one\n");
                  DebugLogPrintf("two %d\n", 2);
                  const std::string text = SandboxRoot::readFile(DebugLogPath());
                  return text.find("| one\n") != std::string::npos &&
                                 text.find("| two 2\n") > text.find("| one\n")
                             ? 0
                             : 1;
              }),
              0);
}

} // namespace
