// ShellInstallerLauncher: a real installer stand-in (a shell script) run to its end, its exit
// code, its parameters, and the names that cannot be started.
#include "messaging/ShellInstallerLauncher.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using TestSupport::SandboxRoot;

// A script that writes its arguments to "args.txt" beside itself and exits with `code`.
void WriteInstaller(const SandboxRoot& root, const std::string& relative, int code) {
    const std::string path = root.file(relative);
    const std::string folder = path.substr(0, path.rfind('/'));
    root.writeFile(relative, "#!/bin/sh\nprintf '%s|' \"$@\" > '" + folder + "/args.txt'\nexit " +
                                 std::to_string(code) + "\n");
    ::chmod(path.c_str(), 0755);
}

TEST(ShellInstallerLauncher, RunsTheInstallerToItsEndAndGivesItsExitCode) {
    SandboxRoot root;
    WriteInstaller(root, "opt/setup", 0);
    ShellInstallerLauncher launcher;
    const auto code =
        launcher.RunAndWait(stdstr::toTString(root.file("opt/setup")), u"--repair  --quiet", u"");
    ASSERT_TRUE(code.has_value());
    EXPECT_EQ(*code, 0u);
    EXPECT_EQ(SandboxRoot::readFile(root.file("opt/args.txt")), "--repair|--quiet|");
}

TEST(ShellInstallerLauncher, ANonZeroExitCodeComesBackAsItIs) {
    SandboxRoot root;
    WriteInstaller(root, "opt/setup", 3);
    ShellInstallerLauncher launcher;
    EXPECT_EQ(launcher.RunAndWait(stdstr::toTString(root.file("opt/setup")), u"", u""),
              std::optional<std::uint32_t>(3));
}

TEST(ShellInstallerLauncher, ARelativeNameIsTakenInTheGivenFolder) {
    SandboxRoot root;
    WriteInstaller(root, "opt/velloran/lspsetup", 7);
    ShellInstallerLauncher launcher;
    EXPECT_EQ(launcher.RunAndWait(u"lspsetup", u"x", stdstr::toTString(root.file("opt/velloran"))),
              std::optional<std::uint32_t>(7));
    EXPECT_EQ(SandboxRoot::readFile(root.file("opt/velloran/args.txt")), "x|");
}

TEST(ShellInstallerLauncher, AnEmptyNameCannotBeStarted) {
    ShellInstallerLauncher launcher;
    EXPECT_EQ(launcher.RunAndWait(u"", u"-q", u"/tmp"), std::nullopt);
}

TEST(ShellInstallerLauncher, AMissingFileCannotBeStarted) {
    SandboxRoot root;
    ShellInstallerLauncher launcher;
    EXPECT_EQ(launcher.RunAndWait(stdstr::toTString(root.file("opt/none")), u"", u""),
              std::nullopt);
}

} // namespace
