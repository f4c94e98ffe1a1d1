#include "foundation/SystemInfo.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <sys/utsname.h>

namespace {

TEST(SystemInfo, OnLinuxNoWindowsFamilyTestAnswersTrue) {
    const SystemInfo info;
    EXPECT_FALSE(info.isWin9x());
    EXPECT_FALSE(info.isWinNT());
    EXPECT_FALSE(info.isWinNTOrLater());
    EXPECT_FALSE(info.isWin2000());
    EXPECT_FALSE(info.isWinXP());
    EXPECT_FALSE(info.isVista());
}

TEST(SystemInfo, TheVersionIsReadAndNamesTheSystem) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("usr/lib/os-release", "PRETTY_NAME='Fallback Linux'\n");
    SystemInfo info({sandbox.file("etc/os-release"), sandbox.file("usr/lib/os-release")});
    EXPECT_TRUE(info.readVersion());
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    EXPECT_EQ(info.getOperatingSystemText(),
              stdstr::toTString(std::string("Fallback Linux, ") + names.sysname + " " +
                                names.release + ", " + names.machine));
}

} // namespace
