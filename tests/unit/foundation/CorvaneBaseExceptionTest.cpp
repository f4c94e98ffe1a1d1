#include "foundation/CorvaneBaseException.h"

#include "foundation/DebugLog.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using TestSupport::SandboxRoot;

TEST(CorvaneBaseException, KeepsItsMessageAndCode) {
    try {
        throw Corvane::BaseException(u"StringHelper.cpp", 12,
                                     u"WideCharToMultiByte function failed");
    } catch (const Corvane::BaseException& e) {
        EXPECT_EQ(e.GetMessage(), u"WideCharToMultiByte function failed");
        EXPECT_EQ(e.GetCode(), -1);
        return;
    }
    FAIL();
}

// The debug log decides once per process whether it is on, and the test above has already
// made it decide in this one (every exception writes to it). So the check runs in a freshly
// started copy of the program (not a fork, which would inherit the decision).
TEST(CorvaneBaseException, ATextIsWrittenToTheDebugLog) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            SandboxRoot root;
            root.writeFile("var/lib/velloran/registry/machine.reg",
                           "Windows Registry Editor Version 5.00\r\n\r\n"
                           "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                           "\"DebugOutput\"=\"\"\r\n");
            Corvane::BaseException e(u"Thread.cpp", 77, u"m", 3);
            const std::string text = SandboxRoot::readFile(DebugLogPath());
            std::_Exit(
                text.find("| ExceptionThrown Base Exception file = (Thread.cpp), line = 77\n") !=
                        std::string::npos
                    ? 0
                    : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
