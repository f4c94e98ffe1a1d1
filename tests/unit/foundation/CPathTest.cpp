#include "foundation/CPath.h"

#include "foundation/SystemPaths.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <unistd.h>

namespace {

stdstr Wide(const std::string& path) {
    return stdstr::toTString(path);
}

// Changes the working directory for one test and goes back afterwards.
class ScopedWorkingDirectory {
public:
    explicit ScopedWorkingDirectory(const std::string& folder) {
        char buffer[PATH_MAX];
        if (::getcwd(buffer, sizeof buffer))
            m_old = buffer;
        EXPECT_EQ(::chdir(folder.c_str()), 0);
    }
    ~ScopedWorkingDirectory() {
        if (!m_old.empty()) {
            EXPECT_EQ(::chdir(m_old.c_str()), 0);
        }
    }
    ScopedWorkingDirectory(const ScopedWorkingDirectory&) = delete;
    ScopedWorkingDirectory& operator=(const ScopedWorkingDirectory&) = delete;

private:
    std::string m_old;
};

} // namespace

TEST(CPath, ATextIsStoredWithSlashesForBackslashes) {
    const CPath path(u"QGSaLangs\\eng\\Quillgate.lng");
    EXPECT_EQ(path.path(), u"QGSaLangs/eng/Quillgate.lng");
    EXPECT_EQ(stdstr(path.c_str()), u"QGSaLangs/eng/Quillgate.lng");
}

TEST(CPath, AssignmentTakesTheTextTheSameWay) {
    CPath path(u"/a");
    path = stdstr(u"b\\c");
    EXPECT_EQ(path.path(), u"b/c");
    const CPath copy = path;
    EXPECT_EQ(copy.path(), u"b/c");
    CPath other;
    other = copy;
    EXPECT_EQ(other.path(), u"b/c");
}

TEST(CPath, APathIsRelativeUnlessItStartsAtTheRoot) {
    EXPECT_FALSE(CPath(u"/usr/lib").isRelative());
    EXPECT_FALSE(CPath(u"/").isRelative());
    EXPECT_FALSE(CPath(u"\\tmp\\x").isRelative());
    EXPECT_TRUE(CPath(u"usr/lib").isRelative());
    EXPECT_TRUE(CPath(u"./x").isRelative());
    EXPECT_TRUE(CPath(u"").isRelative());
    EXPECT_TRUE(CPath(u"C:/x").isRelative());
}

TEST(CPath, TheProgramFolderIsTheFolderOfTheRunningProgram) {
    const CPath folder(CPath::ModuleFolder);
    EXPECT_EQ(folder.path(), Wide(SystemPaths::ProgramFolder()));
    EXPECT_FALSE(folder.isRelative());
    EXPECT_NE(folder.path().back(), u'/');
    // This very test program stands in it.
    const CPath self(CPath::ModuleFolder, Wide(SystemPaths::ProgramFileName()));
    EXPECT_EQ(::access(stdstr::fromTString(self.path()).c_str(), X_OK), 0);
    EXPECT_EQ(self.path(),
              Wide(SystemPaths::ProgramFolder()) + u"/" + Wide(SystemPaths::ProgramFileName()));
}

TEST(CPath, TheTemporaryFolderEndsWithItsSeparator) {
    TestSupport::SandboxRoot root;
    EXPECT_EQ(CPath(CPath::TempFolder).path(), Wide(root.file("tmp/")));
    EXPECT_EQ(CPath(6, u"QGSAGui.txt").path(), Wide(root.file("tmp/QGSAGui.txt")));
}

TEST(CPath, TheCurrentDirectoryIsTheWorkingDirectory) {
    TestSupport::SandboxRoot root;
    ScopedWorkingDirectory here(root.path());
    char buffer[PATH_MAX];
    ASSERT_NE(::getcwd(buffer, sizeof buffer), nullptr);
    EXPECT_EQ(CPath(CPath::CurrentDirectory).path(), Wide(buffer));
    EXPECT_EQ(CPath(0, u"a.txt").path(), Wide(buffer) + u"/a.txt");
}

TEST(CPath, TheSystemFolderKindsAnswerTheirLinuxCounterparts) {
    EXPECT_EQ(CPath(CPath::OperatingSystemFolder).path(), u"/usr");
    EXPECT_EQ(CPath(CPath::SystemFolder).path(), u"/usr/lib");
    EXPECT_EQ(CPath(CPath::DriversFolder).path(), u"/usr/lib/modules");
    EXPECT_EQ(CPath(CPath::SystemFolderParent).path(), u"/usr/");
    EXPECT_EQ(CPath(CPath::ProgramFilesFolder).path(), u"/opt");
    EXPECT_EQ(CPath(CPath::CommonFilesFolder).path(), u"/usr/share");
    EXPECT_EQ(CPath(CPath::MediaFolder).path(), u"/usr/share/sounds");
    EXPECT_EQ(CPath(CPath::DeviceFolder).path(), u"/usr/lib/udev");
}

TEST(CPath, AFolderKindAndAFileNameAreJoinedWithOneSlash) {
    EXPECT_EQ(CPath(CPath::SystemFolder, u"libc.so.6").path(), u"/usr/lib/libc.so.6");
    EXPECT_EQ(CPath(CPath::SystemFolderParent, u"share").path(), u"/usr/share");
    EXPECT_EQ(CPath(CPath::ProgramFilesFolder, u"sub\\x.txt").path(), u"/opt/sub/x.txt");
}

TEST(CPath, AKindThatIsNotKnownGivesNoFolder) {
    EXPECT_EQ(CPath(9).path(), u"");
    EXPECT_EQ(CPath(12).path(), u"");
    EXPECT_EQ(CPath(28).path(), u"");
    EXPECT_EQ(CPath(-1).path(), u"");
    EXPECT_EQ(CPath(9, u"a.txt").path(), u"a.txt");
}

TEST(CPath, APathSplitsIntoDirectoryNameAndExtension) {
    const CPath path(u"/usr/lib/libc.so.6");
    EXPECT_EQ(path.getDirectory(), u"/usr/lib/");
    EXPECT_EQ(path.getName(), u"libc.so");
    EXPECT_EQ(path.getExtension(), u".6");
    EXPECT_EQ(path.getFileName(), u"libc.so.6");
}

TEST(CPath, SplittingHandlesMissingParts) {
    const CPath bare(u"README");
    EXPECT_EQ(bare.getDirectory(), u"");
    EXPECT_EQ(bare.getName(), u"README");
    EXPECT_EQ(bare.getExtension(), u"");

    const CPath dotInFolder(u"/a.b/c");
    EXPECT_EQ(dotInFolder.getDirectory(), u"/a.b/");
    EXPECT_EQ(dotInFolder.getName(), u"c");
    EXPECT_EQ(dotInFolder.getExtension(), u"");

    const CPath folderOnly(u"/usr/lib/");
    EXPECT_EQ(folderOnly.getDirectory(), u"/usr/lib/");
    EXPECT_EQ(folderOnly.getFileName(), u"");

    // A leading dot starts the extension, as the file name has nothing before it.
    const CPath hidden(u"/home/u/.profile");
    EXPECT_EQ(hidden.getName(), u"");
    EXPECT_EQ(hidden.getExtension(), u".profile");
}

TEST(CPath, JoinPutsTheSeparatorAndTheDotWhereTheyAreMissing) {
    CPath path;
    path.join(u"/a", u"b", u"txt");
    EXPECT_EQ(path.path(), u"/a/b.txt");
    path.join(u"/a/", u"b", u".txt");
    EXPECT_EQ(path.path(), u"/a/b.txt");
    path.join(u"", u"b", u"");
    EXPECT_EQ(path.path(), u"b");
    path.join(u"x\\y", u"z", u"");
    EXPECT_EQ(path.path(), u"x/y/z");
}

TEST(CPath, SettingOnePartKeepsTheOthers) {
    CPath path(u"/opt/app/readme.txt");
    path.setName(u"licence");
    EXPECT_EQ(path.path(), u"/opt/app/licence.txt");
    path.setExtension(u"html");
    EXPECT_EQ(path.path(), u"/opt/app/licence.html");
    path.setExtension(u"");
    EXPECT_EQ(path.path(), u"/opt/app/licence");
    path.setDirectory(u"/srv");
    EXPECT_EQ(path.path(), u"/srv/licence");
    path.setFileName(u"eng-qghelp.html");
    EXPECT_EQ(path.path(), u"/srv/eng-qghelp.html");
}

TEST(CPath, AppendFolderAddsAFolderBelowThePath) {
    CPath path(u"/usr/lib");
    path.appendFolder(u"quillgate");
    EXPECT_EQ(path.path(), u"/usr/lib/quillgate");
    path.appendFolder(u"/QGSaLangs");
    EXPECT_EQ(path.path(), u"/usr/lib/quillgate/QGSaLangs");

    CPath withSlash(u"/tmp/");
    withSlash.appendFolder(u"x");
    EXPECT_EQ(withSlash.path(), u"/tmp/x");

    CPath empty;
    empty.appendFolder(u"x");
    EXPECT_EQ(empty.path(), u"x");
}
