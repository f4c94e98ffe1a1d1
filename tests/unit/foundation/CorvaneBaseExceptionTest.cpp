#include "foundation/CorvaneBaseException.h"

#include "foundation/DebugLog.h"

#include "support/SandboxRoot.h"

#include "support/RunInChild.h"

#include <gtest/gtest.h>

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

TEST(CorvaneBaseException, ATextIsWrittenToTheDebugLog) {
    EXPECT_EQ(TestSupport::RunInChild([] {
                  SandboxRoot root;
                  root.writeFile("var/lib/velloran/registry/machine.reg",
                                 "Windows Registry Editor Version 5.00\r\n\r\n"
                                 "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                                 "\"DebugOutput\"=\"\"\r\n");
                  Corvane::BaseException e(u"Thread.cpp", 77, u"m", 3);
                  const std::string text = SandboxRoot::readFile(DebugLogPath());
                  return text.find(
                             "| ExceptionThrown Base Exception file = (Thread.cpp), line = 77\n") !=
                                 std::string::npos
                             ? 0
                             : 1;
              }),
              0);
}

} // namespace
