#include "foundation/CorvaneSystemInfo.h"

#include "foundation/ScreenAreaSource.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace {

using Corvane::Rect;
using Corvane::ScreenArea;
using Corvane::ScreenAreaSource;
using Corvane::SystemInfo;

class FixedScreen : public ScreenAreaSource {
public:
    explicit FixedScreen(std::optional<ScreenArea> area) : m_area(area) {}
    std::optional<ScreenArea> primaryScreen() const override { return m_area; }

private:
    std::optional<ScreenArea> m_area;
};

// Installs a screen for one test and removes it again.
class InstalledScreen {
public:
    explicit InstalledScreen(std::optional<ScreenArea> area) {
        ScreenAreaSource::install(std::make_shared<FixedScreen>(area));
    }
    ~InstalledScreen() { ScreenAreaSource::install(nullptr); }
};

const Rect FullHd{0, 0, 1920, 1080};

ScreenArea Screen(Rect workArea, Rect geometry = FullHd, int depth = 24) {
    return ScreenArea{geometry, workArea, depth};
}

std::u16string U(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

TEST(CorvaneSystemInfo, NoWindowsFamilyTestAnswersTrue) {
    const SystemInfo info;
    EXPECT_FALSE(info.isWin9x());
    EXPECT_FALSE(info.isWinNTOrLater());
    EXPECT_FALSE(info.isWin2000());
    EXPECT_FALSE(info.isWinXP());
    EXPECT_FALSE(info.isWinNT());
    EXPECT_FALSE(info.isWinXPOrServer2003());
    EXPECT_FALSE(info.isServer2003());
    EXPECT_FALSE(info.isVista());
}

TEST(CorvaneSystemInfo, ThereIsNoWindowsFolder) {
    EXPECT_EQ(SystemInfo().getWindowsFolder(), u"");
}

TEST(CorvaneSystemInfo, TheCurrentFolderIsTheWorkingFolder) {
    TestSupport::SandboxRoot sandbox;
    char before[PATH_MAX] = {};
    ASSERT_NE(::getcwd(before, sizeof before), nullptr);
    ASSERT_EQ(::chdir(sandbox.file("tmp").c_str()), 0);
    const std::u16string folder = SystemInfo().getCurrentFolder();
    ASSERT_EQ(::chdir(before), 0);
    EXPECT_EQ(folder, U(std::filesystem::canonical(sandbox.file("tmp")).string()));
}

TEST(CorvaneSystemInfo, TheAppDataFolderIsTheConfigurationFolder) {
    TestSupport::SandboxRoot sandbox;
    ::setenv("XDG_CONFIG_HOME", "/srv/config", 1);
    EXPECT_EQ(SystemInfo().getAppDataFolder(), u"/srv/config");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(SystemInfo().getAppDataFolder(), U(sandbox.file("home/.config")));
    // A relative value is no value.
    ::setenv("XDG_CONFIG_HOME", "relative/config", 1);
    EXPECT_EQ(SystemInfo().getAppDataFolder(), U(sandbox.file("home/.config")));
}

TEST(CorvaneSystemInfo, WithoutConfigurationOrHomeFolderTheAppDataFolderIsEmpty) {
    TestSupport::SandboxRoot sandbox;
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("HOME");
    EXPECT_EQ(SystemInfo().getAppDataFolder(), u"");
}

TEST(CorvaneSystemInfo, TheTempFolderHasNoTrailingSlash) {
    TestSupport::SandboxRoot sandbox;
    ::setenv("TMPDIR", "/var/tmp/", 1);
    EXPECT_EQ(SystemInfo().getTempFolder(), u"/var/tmp");
    ::setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(SystemInfo().getTempFolder(), u"/var/tmp");
    ::unsetenv("TMPDIR");
    EXPECT_EQ(SystemInfo().getTempFolder(), u"/tmp");
    ::setenv("TMPDIR", "/", 1);
    EXPECT_EQ(SystemInfo().getTempFolder(), u"/");
}

TEST(CorvaneSystemInfo, TheUserProfileIsTheHomeFolder) {
    TestSupport::SandboxRoot sandbox;
    EXPECT_EQ(SystemInfo().getUserProfileFolder(), U(sandbox.file("home")));
    ::unsetenv("HOME");
    const passwd* entry = ::getpwuid(::geteuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(SystemInfo().getUserProfileFolder(), U(entry->pw_dir));
}

TEST(CorvaneSystemInfo, TheOperatingSystemTextNamesTheDistributionAndTheKernel) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("os-release", "NAME=\"Test\"\nPRETTY_NAME=\"Test OS 7 (tidy)\"\n");
    SystemInfo info({sandbox.file("os-release")});
    EXPECT_TRUE(info.readVersion());
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    EXPECT_EQ(info.getOperatingSystemText(), u"Test OS 7 (tidy), " + U(names.sysname) + u" " +
                                                 U(names.release) + u", " + U(names.machine));
}

TEST(CorvaneSystemInfo, WithoutOsReleaseTheKernelAloneIsNamed) {
    TestSupport::SandboxRoot sandbox;
    const SystemInfo info({sandbox.file("missing"), sandbox.file("also-missing")});
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    EXPECT_EQ(info.getOperatingSystemText(),
              U(names.sysname) + u" " + U(names.release) + u", " + U(names.machine));
}

TEST(CorvaneSystemInfo, WithoutAScreenSourceNothingIsKnownAndThePanelIsAtTheBottom) {
    ScreenAreaSource::install(nullptr);
    const SystemInfo info;
    EXPECT_EQ(info.getBitsPerPixel(), 0);
    EXPECT_EQ(info.getScreenWidth(), 0);
    EXPECT_EQ(info.getScreenHeight(), 0);
    EXPECT_EQ(info.getTaskbarEdge(), 3);
    Rect taskbar{1, 2, 3, 4};
    Rect notify{5, 6, 7, 8};
    info.getTaskbarRects(taskbar, notify);
    EXPECT_EQ(taskbar, (Rect{1, 2, 3, 4}));
    EXPECT_EQ(notify, (Rect{5, 6, 7, 8}));
}

TEST(CorvaneSystemInfo, AScreenSourceWithoutAScreenIsAsNone) {
    const InstalledScreen screen(std::nullopt);
    const SystemInfo info;
    EXPECT_EQ(info.getScreenWidth(), 0);
    EXPECT_EQ(info.getTaskbarEdge(), 3);
}

TEST(CorvaneSystemInfo, TheScreenIsTheSourcesPrimaryScreen) {
    const InstalledScreen screen(Screen({0, 0, 2560, 1400}, {0, 0, 2560, 1440}, 30));
    const SystemInfo info;
    EXPECT_EQ(info.getScreenWidth(), 2560);
    EXPECT_EQ(info.getScreenHeight(), 1440);
    EXPECT_EQ(info.getBitsPerPixel(), 30);
}

TEST(CorvaneSystemInfo, APanelAtTheBottom) {
    const InstalledScreen screen(Screen({0, 0, 1920, 1040}));
    const SystemInfo info;
    Rect taskbar;
    Rect notify;
    info.getTaskbarRects(taskbar, notify);
    EXPECT_EQ(info.getTaskbarEdge(), 3);
    EXPECT_EQ(taskbar, (Rect{0, 1040, 1920, 1080}));
    EXPECT_EQ(notify, (Rect{1820, 1040, 1904, 1080}));
}

TEST(CorvaneSystemInfo, APanelAtTheTop) {
    const InstalledScreen screen(Screen({0, 32, 1920, 1080}));
    const SystemInfo info;
    Rect taskbar;
    Rect notify;
    info.getTaskbarRects(taskbar, notify);
    EXPECT_EQ(info.getTaskbarEdge(), 1);
    EXPECT_EQ(taskbar, (Rect{0, 0, 1920, 32}));
    EXPECT_EQ(notify, (Rect{1820, 0, 1904, 32}));
}

TEST(CorvaneSystemInfo, APanelAtTheLeft) {
    const InstalledScreen screen(Screen({64, 0, 1920, 1080}));
    const SystemInfo info;
    Rect taskbar;
    Rect notify;
    info.getTaskbarRects(taskbar, notify);
    EXPECT_EQ(info.getTaskbarEdge(), 0);
    EXPECT_EQ(taskbar, (Rect{0, 0, 64, 1080}));
    EXPECT_EQ(notify, (Rect{0, 980, 64, 1064}));
}

TEST(CorvaneSystemInfo, APanelAtTheRight) {
    const InstalledScreen screen(Screen({0, 0, 1872, 1080}));
    const SystemInfo info;
    Rect taskbar;
    Rect notify;
    info.getTaskbarRects(taskbar, notify);
    EXPECT_EQ(info.getTaskbarEdge(), 2);
    EXPECT_EQ(taskbar, (Rect{1872, 0, 1920, 1080}));
    EXPECT_EQ(notify, (Rect{1872, 980, 1920, 1064}));
}

TEST(CorvaneSystemInfo, OfTwoPanelsTheLargerCounts) {
    // A 32-pixel bar at the top and a 64-pixel dock at the left.
    const InstalledScreen screen(Screen({64, 32, 1920, 1080}));
    EXPECT_EQ(SystemInfo().getTaskbarEdge(), 0);
}

TEST(CorvaneSystemInfo, APanelOnASecondScreenAtAnOffset) {
    const InstalledScreen screen(Screen({1920, 0, 3840, 1040}, {1920, 0, 3840, 1080}));
    Rect taskbar;
    Rect notify;
    SystemInfo().getTaskbarRects(taskbar, notify);
    EXPECT_EQ(taskbar, (Rect{1920, 1040, 3840, 1080}));
    EXPECT_EQ(notify, (Rect{3740, 1040, 3824, 1080}));
}

TEST(CorvaneSystemInfo, WithoutAPanelTheNotifyAreaIsTheCornerOfTheWorkArea) {
    const InstalledScreen screen(Screen(FullHd));
    const SystemInfo info;
    Rect taskbar{1, 2, 3, 4};
    Rect notify;
    info.getTaskbarRects(taskbar, notify);
    EXPECT_EQ(info.getTaskbarEdge(), 3);
    EXPECT_EQ(taskbar, (Rect{1, 2, 3, 4}));
    EXPECT_EQ(notify, (Rect{1770, 1050, 1920, 1080}));
}

TEST(CorvaneSystemInfo, AWorkAreaLargerThanTheScreenMakesNoPanel) {
    const InstalledScreen screen(Screen({-10, -10, 1930, 1090}));
    Rect taskbar{1, 2, 3, 4};
    Rect notify;
    SystemInfo().getTaskbarRects(taskbar, notify);
    EXPECT_EQ(taskbar, (Rect{1, 2, 3, 4}));
    EXPECT_EQ(notify, (Rect{1780, 1060, 1930, 1090}));
    EXPECT_EQ(SystemInfo().getTaskbarEdge(), 3);
}

} // namespace
