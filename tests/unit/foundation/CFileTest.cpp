#include "foundation/CFile.h"

#include "foundation/stdstr.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

stdstr Wide(const std::string& path) {
    return stdstr::toTString(path);
}

// Sets the process's umask for one test and puts the old one back.
class ScopedUmask {
public:
    explicit ScopedUmask(mode_t mask) : m_old(::umask(mask)) {}
    ~ScopedUmask() { ::umask(m_old); }
    ScopedUmask(const ScopedUmask&) = delete;
    ScopedUmask& operator=(const ScopedUmask&) = delete;

private:
    mode_t m_old;
};

// Both ends of a pipe, closed at the end of the test unless handed on.
struct Pipe {
    int fds[2] = {-1, -1};
    Pipe() { EXPECT_EQ(::pipe2(fds, O_CLOEXEC), 0); }
    ~Pipe() {
        for (int fd : fds)
            if (fd != -1)
                ::close(fd);
    }
};

} // namespace

TEST(CFile, OpenOnAnObjectWithAFileOpenFailsAndLeavesItClosedThenASecondCallSucceeds) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "abc");
    const stdstr path = Wide(root.file("a.txt"));
    CFile file;
    ASSERT_TRUE(file.open(path.c_str(), CFile::modeRead));
    ASSERT_TRUE(file.isOpen());

    EXPECT_FALSE(file.open(path.c_str(), CFile::modeRead));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.handle(), -1);

    EXPECT_TRUE(file.open(path.c_str(), CFile::modeRead));
    EXPECT_TRUE(file.isOpen());
}

TEST(CFile, CloseWithoutAFileReturnsTrue) {
    CFile file;
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(file.close());
}

TEST(CFile, CloseOfAnOpenFileReturnsFalseAndReleasesTheDescriptor) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "abc");
    CFile file;
    ASSERT_TRUE(file.open(Wide(root.file("a.txt")).c_str(), CFile::modeRead));
    const int fd = file.handle();
    EXPECT_FALSE(file.close());
    EXPECT_FALSE(file.isOpen());
    errno = 0;
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
    EXPECT_EQ(errno, EBADF);
}

TEST(CFile, ANullOrEmptyPathFails) {
    CFile file;
    EXPECT_FALSE(file.open(nullptr, CFile::modeRead));
    EXPECT_FALSE(file.open(u"", CFile::modeReadWrite | CFile::modeCreate));
    EXPECT_FALSE(file.isOpen());
}

TEST(CFile, WithoutCreateTheFileMustExist) {
    TestSupport::SandboxRoot root;
    CFile file;
    errno = 0;
    EXPECT_FALSE(file.open(Wide(root.file("missing.txt")).c_str(), CFile::modeReadWrite));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(file.isOpen());
    EXPECT_NE(::access(root.file("missing.txt").c_str(), F_OK), 0);
}

TEST(CFile, CreateAloneEmptiesAnExistingFile) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "old content");
    CFile file;
    ASSERT_TRUE(file.open(Wide(root.file("a.txt")).c_str(), CFile::modeWrite | CFile::modeCreate));
    EXPECT_EQ(file.getLength(), 0);
}

TEST(CFile, CreateForReadingAloneStillEmptiesAnExistingFile) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "old content");
    CFile file;
    ASSERT_TRUE(file.open(Wide(root.file("a.txt")).c_str(), CFile::modeRead | CFile::modeCreate));
    EXPECT_EQ(file.getLength(), 0);
}

TEST(CFile, CreateWithNoTruncateKeepsTheContentAndCreatesAMissingFile) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "old content");
    const unsigned flags = CFile::modeReadWrite | CFile::modeCreate | CFile::modeNoTruncate;
    CFile kept;
    ASSERT_TRUE(kept.open(Wide(root.file("a.txt")).c_str(), flags));
    EXPECT_EQ(kept.getLength(), 11);

    CFile created;
    ASSERT_TRUE(created.open(Wide(root.file("new.txt")).c_str(), flags));
    EXPECT_EQ(created.getLength(), 0);
    EXPECT_EQ(::access(root.file("new.txt").c_str(), F_OK), 0);
}

TEST(CFile, NewFilesGetMode0644LessTheUmask) {
    TestSupport::SandboxRoot root;
    {
        ScopedUmask mask(022);
        CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeWrite | CFile::modeCreate);
        ASSERT_TRUE(file.isOpen());
    }
    {
        ScopedUmask mask(077);
        CFile file(Wide(root.file("b.txt")).c_str(), CFile::modeWrite | CFile::modeCreate);
        ASSERT_TRUE(file.isOpen());
    }
    struct stat st {};
    ASSERT_EQ(::stat(root.file("a.txt").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0644u);
    ASSERT_EQ(::stat(root.file("b.txt").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0600u);
}

TEST(CFile, TheDescriptorIsNotInheritedByChildProcesses) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "abc");
    CFile withFlag(Wide(root.file("a.txt")).c_str(), CFile::modeRead | CFile::modeNoInherit);
    CFile withoutFlag(Wide(root.file("a.txt")).c_str(), CFile::modeRead);
    ASSERT_TRUE(withFlag.isOpen());
    ASSERT_TRUE(withoutFlag.isOpen());
    EXPECT_NE(::fcntl(withFlag.handle(), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_NE(::fcntl(withoutFlag.handle(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(CFile, AFolderCannotBeOpenedAsAFile) {
    TestSupport::SandboxRoot root;
    CFile file;
    errno = 0;
    EXPECT_FALSE(file.open(Wide(root.path()).c_str(), CFile::modeRead));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(file.isOpen());
}

TEST(CFile, ANonAsciiPathIsTakenAsUtf8OnDisk) {
    TestSupport::SandboxRoot root;
    CFile file;
    ASSERT_TRUE(file.open((Wide(root.path()) + u"/gr\u00FC\u00DFe \u65E5\u672C.txt").c_str(),
                          CFile::modeWrite | CFile::modeCreate));
    EXPECT_EQ(::access(root.file("gr\xC3\xBC\xC3\x9F"
                                 "e \xE6\x97\xA5\xE6\x9C\xAC.txt")
                           .c_str(),
                       F_OK),
              0);
}

TEST(CFile, WriteAndReadGoThroughTheSamePosition) {
    TestSupport::SandboxRoot root;
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeReadWrite | CFile::modeCreate);
    ASSERT_TRUE(file.isOpen());
    EXPECT_TRUE(file.write("hello world", 11));
    EXPECT_EQ(file.getPosition(), 11);
    EXPECT_EQ(file.getLength(), 11);

    EXPECT_EQ(file.seekToStart(), 0);
    char buffer[32] = {};
    EXPECT_EQ(file.read(buffer, 5), 5u);
    EXPECT_EQ(std::string(buffer, 5), "hello");
    EXPECT_EQ(file.seek(1, CFile::current), 6);
    EXPECT_EQ(file.read(buffer, sizeof buffer), 5u);
    EXPECT_EQ(std::string(buffer, 5), "world");
    // At the end nothing more comes.
    EXPECT_EQ(file.read(buffer, sizeof buffer), 0u);
    EXPECT_EQ(file.seek(-5, CFile::end), 6);
    EXPECT_EQ(file.seekToEnd(), 11);
}

TEST(CFile, ReadOfZeroBytesReturnsZeroAndWriteOfZeroBytesIsTrue) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "abc");
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeRead);
    char c = 0;
    EXPECT_EQ(file.read(&c, 0), 0u);
    EXPECT_TRUE(file.write(&c, 0));
    CFile closed;
    EXPECT_TRUE(closed.write(&c, 0));
    EXPECT_FALSE(closed.write(&c, 1));
    EXPECT_EQ(closed.read(&c, 1), 0u);
}

TEST(CFile, WritingToAFileOpenedForReadingFails) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "abc");
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeRead);
    ASSERT_TRUE(file.isOpen());
    EXPECT_FALSE(file.write("x", 1));
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(root.file("a.txt")), "abc");
}

TEST(CFile, ReadingFromAFileOpenedForWritingReturnsZero) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "abc");
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeWrite);
    ASSERT_TRUE(file.isOpen());
    char buffer[4] = {};
    EXPECT_EQ(file.read(buffer, 3), 0u);
}

TEST(CFile, SetLengthCutsOrExtendsAndLeavesThePositionThere) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "0123456789");
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeReadWrite);
    ASSERT_TRUE(file.isOpen());
    EXPECT_TRUE(file.setLength(4));
    EXPECT_EQ(file.getLength(), 4);
    EXPECT_EQ(file.getPosition(), 4);
    EXPECT_TRUE(file.setLength(6));
    EXPECT_EQ(file.getLength(), 6);
    file.close();
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(root.file("a.txt")), std::string("0123\0\0", 6));
}

TEST(CFile, SetEndOfFileCutsAtThePosition) {
    TestSupport::SandboxRoot root;
    root.writeFile("a.txt", "0123456789");
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeReadWrite);
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(file.seek(3, CFile::begin), 3);
    EXPECT_TRUE(file.setEndOfFile());
    file.close();
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(root.file("a.txt")), "012");
}

TEST(CFile, LengthsAndPositionsGoPastFourGibibytes) {
    TestSupport::SandboxRoot root;
    CFile file(Wide(root.file("big.bin")).c_str(), CFile::modeReadWrite | CFile::modeCreate);
    ASSERT_TRUE(file.isOpen());
    const std::int64_t fourGiB = std::int64_t{1} << 32;
    // Sparse: no disk space is used for the hole.
    ASSERT_TRUE(file.setLength(fourGiB + 100));
    EXPECT_EQ(file.getLength(), fourGiB + 100);
    EXPECT_EQ(file.seek(fourGiB + 10, CFile::begin), fourGiB + 10);
    EXPECT_TRUE(file.write("xy", 2));
    EXPECT_EQ(file.getPosition(), fourGiB + 12);
    EXPECT_EQ(file.seek(-2, CFile::current), fourGiB + 10);
    char buffer[2] = {};
    EXPECT_EQ(file.read(buffer, 2), 2u);
    EXPECT_EQ(std::string(buffer, 2), "xy");
}

TEST(CFile, OperationsOnAClosedObjectFailQuietly) {
    CFile file;
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.getPosition(), -1);
    EXPECT_EQ(file.seek(0, CFile::begin), -1);
    EXPECT_EQ(file.getLength(), -1);
    EXPECT_FALSE(file.setLength(0));
    EXPECT_FALSE(file.setEndOfFile());
    EXPECT_TRUE(file.flush());
}

TEST(CFile, FlushOfAnOpenFileSucceeds) {
    TestSupport::SandboxRoot root;
    CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeWrite | CFile::modeCreate);
    ASSERT_TRUE(file.write("line\r\n", 6));
    EXPECT_TRUE(file.flush());
}

TEST(CFile, AnAdoptedDescriptorIsOwnedAndClosedWithTheObject) {
    Pipe pipe;
    {
        CFile reader(pipe.fds[0]);
        EXPECT_TRUE(reader.isOpen());
        EXPECT_EQ(reader.handle(), pipe.fds[0]);
    }
    errno = 0;
    EXPECT_EQ(::fcntl(pipe.fds[0], F_GETFD), -1);
    EXPECT_EQ(errno, EBADF);
    pipe.fds[0] = -1;
}

TEST(CFile, ReadFromAPipeReturnsWhatIsThereWithoutWaitingForMore) {
    Pipe pipe;
    CFile reader(pipe.fds[0]);
    pipe.fds[0] = -1;
    CFile writer(pipe.fds[1]);
    pipe.fds[1] = -1;
    ASSERT_TRUE(writer.write("abc", 3));
    // A pipe has nothing to synchronise to a disk; flushing it is not a failure.
    EXPECT_TRUE(writer.flush());
    char buffer[16] = {};
    EXPECT_EQ(reader.read(buffer, sizeof buffer), 3u);
    EXPECT_EQ(std::string(buffer, 3), "abc");
}

TEST(CFile, TheDestructorClosesAnOpenFile) {
    TestSupport::SandboxRoot root;
    int fd = -1;
    {
        CFile file(Wide(root.file("a.txt")).c_str(), CFile::modeWrite | CFile::modeCreate);
        fd = file.handle();
        ASSERT_NE(fd, -1);
    }
    errno = 0;
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
    EXPECT_EQ(errno, EBADF);
}
