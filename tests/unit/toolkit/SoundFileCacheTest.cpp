// Event sounds written to a private folder for the sound server.

#include "toolkit/SoundFileCache.h"
#include "ToolkitTestApp.h"
#include "support/SandboxRoot.h"
#include "toolkit/ResourceStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

TEST(SoundFileCache, TheDefaultFolderIsInTheRuntimeFolder) {
    TestSupport::SandboxRoot root;
    EXPECT_EQ(SoundFileCache::DefaultFolder(),
              qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/quillgate-sounds"));
}

TEST(SoundFileCache, WithoutARuntimeFolderTheTemporaryFolderIsUsedPerUser) {
    TestSupport::SandboxRoot root;
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(SoundFileCache::DefaultFolder(),
              qEnvironmentVariable("TMPDIR") +
                  QStringLiteral("/quillgate-sounds-%1").arg(getuid()));
}

TEST(SoundFileCache, ASoundIsWrittenOnceWithTheResourcesBytes) {
    ToolkitTestApp();
    TestSupport::SandboxRoot root;
    SoundFileCache cache;
    const QString path = cache.FileFor(206);
    ASSERT_FALSE(path.isEmpty());
    EXPECT_TRUE(path.startsWith(qEnvironmentVariable("XDG_RUNTIME_DIR")));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), ResourceStore::SoundData(206));
    file.close();

    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(cache.Folder()).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);

    // The second time, the file is not written again.
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(cache.FileFor(206), path);
    EXPECT_FALSE(QFile::exists(path));
}

TEST(SoundFileCache, AMissingSoundGivesNoFile) {
    ToolkitTestApp();
    TestSupport::SandboxRoot root;
    SoundFileCache cache;
    EXPECT_TRUE(cache.FileFor(207).isEmpty());
}

TEST(SoundFileCache, AFolderThatIsNotAFolderIsNotWrittenInto) {
    ToolkitTestApp();
    TestSupport::SandboxRoot root;
    const QString taken = QString::fromStdString(root.file("taken"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/tmp"), taken));
    SoundFileCache cache(taken);
    EXPECT_TRUE(cache.Folder().isEmpty());
    EXPECT_TRUE(cache.FileFor(206).isEmpty());
}
