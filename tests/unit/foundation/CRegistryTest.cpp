#include "foundation/CRegistry.h"

#include "foundation/CTraceFileLog.h"
#include "foundation/RegistryTypes.h"
#include "foundation/Trace.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using TestSupport::SandboxRoot;

const std::string Header = "Windows Registry Editor Version 5.00\r\n\r\n";

void WriteMachineStore(const SandboxRoot& root, const std::string& body) {
    root.writeFile("var/lib/velloran/registry/machine.reg", Header + body);
}

std::u16string FromUtf16Le(const std::string& bytes) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    return text;
}

int WaitForChild(pid_t pid) {
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

// Runs `work` in a child whose trace log is the file `path` (default level: errors and
// warnings), and answers what the child wrote there, without the file's byte order mark.
template <class Work>
std::u16string TraceOfChild(const std::string& path, Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        TraceAddModule(
            std::make_unique<CTraceFileLog>(stdstr::toTString(path).c_str(), true, 2, 0x500000)
                .release());
        ::_exit(work() ? 0 : 1);
    }
    EXPECT_EQ(WaitForChild(child), 0);
    std::u16string text = FromUtf16Le(SandboxRoot::readFile(path));
    if (!text.empty() && text.front() == u'\xFEFF')
        text.erase(0, 1);
    return text;
}

// The trace line without its date and thread, which come before the level's label.
std::u16string WithoutStamp(const std::u16string& line) {
    const auto label = line.find(u"Warn: ");
    return label == std::u16string::npos ? u"<no warning: " + line + u">" : line.substr(label);
}

TEST(CRegistry, OpeningAMissingKeyFailsWithFileNotFoundAndTracesIt) {
    SandboxRoot root;
    const std::u16string trace = TraceOfChild(root.file("tmp/trace.txt"), [] {
        CRegistry key;
        std::uint32_t disposition = 99;
        return !key.Open(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Velloran\\Missing", KEY_READ, false, 0,
                         nullptr, &disposition) &&
               key.lastError() == ERROR_FILE_NOT_FOUND && disposition == 99 && !key.isOpen();
    });
    EXPECT_EQ(WithoutStamp(trace),
              u"Warn: CRegistry::Open(0x80000002, SOFTWARE\\Velloran\\Missing): "
              u"failed, error (Windows OS Error: No such file or directory)\r\n");
}

TEST(CRegistry, ASuccessfulOpenTracesNothing) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\VLQGSAGui]\r\n");
    const std::u16string trace = TraceOfChild(root.file("tmp/trace.txt"), [] {
        CRegistry key;
        return key.Open(HKEY_LOCAL_MACHINE, u"software\\velloran\\vlqgsagui", KEY_READ) &&
               key.lastError() == ERROR_SUCCESS;
    });
    EXPECT_EQ(trace, u"");
}

TEST(CRegistry, OpenWithoutRightsToWriteIsDeniedAndTraced) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n");
    const bool asRoot = ::geteuid() == 0;
    if (asRoot) {
        for (const char* folder : {"", "/var", "/var/lib", "/var/lib/velloran"})
            ::chmod((root.path() + folder).c_str(), 0755);
        ::chmod(root.file("var/lib/velloran/registry").c_str(), 0755);
        ::chmod(root.file("var/lib/velloran/registry/machine.reg").c_str(), 0644);
    } else {
        ::chmod(root.file("var/lib/velloran/registry").c_str(), 0555);
    }
    const std::u16string trace = TraceOfChild(root.file("tmp/trace.txt"), [asRoot] {
        if (asRoot && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            return false;
        CRegistry key;
        const bool denied =
            !key.Open(HKEY_LOCAL_MACHINE, u"Software\\Velloran\\Quillgate", KEY_WRITE) &&
            key.lastError() == ERROR_ACCESS_DENIED;
        // Reading stays possible.
        return denied && key.Open(HKEY_LOCAL_MACHINE, u"Software\\Velloran\\Quillgate", KEY_READ);
    });
    ::chmod(root.file("var/lib/velloran/registry").c_str(), 0775);
    EXPECT_EQ(WithoutStamp(trace),
              u"Warn: CRegistry::Open(0x80000002, Software\\Velloran\\Quillgate): "
              u"failed, error (Windows OS Error: Permission denied)\r\n");
}

TEST(CRegistry, OpenWithCreateMakesTheKeyAndTellsTheDisposition) {
    SandboxRoot root;
    CRegistry key;
    std::uint32_t disposition = 0;
    ASSERT_TRUE(key.Open(HKEY_CURRENT_USER, u"SOFTWARE\\Velloran\\Quillgate", KEY_ALL_ACCESS, true,
                         REG_OPTION_NON_VOLATILE, nullptr, &disposition));
    EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
    EXPECT_EQ(key.lastError(), ERROR_SUCCESS);
    ASSERT_TRUE(key.Open(HKEY_CURRENT_USER, u"Software\\Velloran\\Quillgate", KEY_ALL_ACCESS, true,
                         REG_OPTION_NON_VOLATILE, nullptr, &disposition));
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    EXPECT_NE(SandboxRoot::readFile(root.file("home/.config/velloran/user.reg"))
                  .find("[HKEY_CURRENT_USER\\SOFTWARE\\Velloran\\Quillgate]\n"),
              std::string::npos);
}

TEST(CRegistry, AnUnknownRootIsAnInvalidHandle) {
    SandboxRoot root;
    CRegistry key;
    EXPECT_FALSE(key.Open(0x80000003u, u"Software", KEY_READ, true));
    EXPECT_EQ(key.lastError(), ERROR_INVALID_HANDLE);
}

TEST(CRegistry, ValuesAreReadFromTheOpenKeyOrASubKey) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\VLQGSAGui]\r\n"
                            "\"Log Level\"=dword:0000003f\r\n"
                            "\"QGSAGuiLogFile\"=\"/var/log/quillgate.txt\"\r\n"
                            "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Velloran\\VLQGSAGui\\Sub]\r\n"
                            "\"Inner\"=\"inside\"\r\n"
                            "\"Number\"=dword:00000009\r\n");
    CRegistry key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Velloran\\VLQGSAGui", KEY_READ));
    std::uint32_t number = 0;
    EXPECT_TRUE(key.getNumber(u"log level", number));
    EXPECT_EQ(number, 0x3fu);
    stdstr text;
    EXPECT_TRUE(key.getString(u"QGSAGuiLogFile", text));
    EXPECT_EQ(text, u"/var/log/quillgate.txt");
    EXPECT_TRUE(key.getString(u"Inner", text, u"SUB"));
    EXPECT_EQ(text, u"inside");
    EXPECT_TRUE(key.getNumber(u"Number", number, u"sub"));
    EXPECT_EQ(number, 9u);
    EXPECT_FALSE(key.getString(u"Inner", text));
    EXPECT_FALSE(key.getString(u"Inner", text, u"Missing"));
}

TEST(CRegistry, GetNumberOnAStringValueIsFalseAndLeavesTheResultAlone) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\K]\r\n\"Text\"=\"12\"\r\n");
    CRegistry key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, u"K", KEY_READ));
    std::uint32_t number = 41;
    EXPECT_FALSE(key.getNumber(u"Text", number));
    EXPECT_EQ(number, 41u);
}

TEST(CRegistry, GetStringOnAValueOfZeroLengthIsEmptyAndTrue) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\K]\r\n\"Empty\"=hex(1):\r\n");
    CRegistry key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, u"K", KEY_READ));
    stdstr text = u"old";
    EXPECT_TRUE(key.getString(u"Empty", text));
    EXPECT_EQ(text, u"");
}

TEST(CRegistry, SetStringWritesThroughAKeyOpenedForWriting) {
    SandboxRoot root;
    CRegistry key;
    ASSERT_TRUE(
        key.Open(HKEY_CURRENT_USER, u"SOFTWARE\\Velloran\\Quillgate", KEY_ALL_ACCESS, true));
    ASSERT_TRUE(key.setString(u"Language", u"Deutsch (Deutschland)"));
    stdstr text;
    EXPECT_TRUE(key.getString(u"Language", text));
    EXPECT_EQ(text, u"Deutsch (Deutschland)");

    CRegistry reader;
    ASSERT_TRUE(reader.Open(HKEY_CURRENT_USER, u"SOFTWARE\\Velloran\\Quillgate", KEY_READ));
    EXPECT_FALSE(reader.setString(u"Language", u"English (US)"));
    CRegistry writer;
    ASSERT_TRUE(writer.Open(HKEY_CURRENT_USER, u"SOFTWARE\\Velloran\\Quillgate", KEY_WRITE));
    EXPECT_FALSE(writer.getString(u"Language", text));
    EXPECT_TRUE(reader.getString(u"Language", text));
    EXPECT_EQ(text, u"Deutsch (Deutschland)");
}

TEST(CRegistry, SetStringWithoutCreateOnAMissingSubKeyIsFalseAndMakesNothing) {
    SandboxRoot root;
    CRegistry key;
    ASSERT_TRUE(key.Open(HKEY_CURRENT_USER, u"Software", KEY_ALL_ACCESS, true));
    const std::string before = SandboxRoot::readFile(root.file("home/.config/velloran/user.reg"));
    EXPECT_FALSE(key.setString(u"V", u"x", u"Missing", false));
    EXPECT_EQ(SandboxRoot::readFile(root.file("home/.config/velloran/user.reg")), before);
    EXPECT_FALSE(key.keyExists(HKEY_CURRENT_USER, u"Software\\Missing", false));
    EXPECT_TRUE(key.setString(u"V", u"x", u"Missing", true));
    stdstr text;
    EXPECT_TRUE(key.getString(u"V", text, u"missing"));
    EXPECT_EQ(text, u"x");
}

TEST(CRegistry, KeyExistsWithCreateMakesAMissingKey) {
    SandboxRoot root;
    CRegistry registry;
    EXPECT_FALSE(registry.keyExists(HKEY_LOCAL_MACHINE, u"Software\\Velloran\\Quillgate", false));
    EXPECT_FALSE(std::filesystem::exists(root.file("var/lib/velloran/registry/machine.reg")));
    EXPECT_TRUE(registry.keyExists(HKEY_LOCAL_MACHINE, u"Software\\Velloran\\Quillgate", true));
    EXPECT_TRUE(registry.keyExists(HKEY_LOCAL_MACHINE, u"SOFTWARE\\VELLORAN", false));
    EXPECT_TRUE(registry.keyExists(HKEY_LOCAL_MACHINE, u"Software\\Velloran\\Quillgate", false));
    // The key the object holds is not touched by keyExists.
    EXPECT_FALSE(registry.isOpen());
    EXPECT_EQ(registry.lastError(), ERROR_SUCCESS);
}

TEST(CRegistry, AClosedKeyAnswersFalse) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\K]\r\n\"Text\"=\"x\"\r\n");
    CRegistry key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, u"K", KEY_ALL_ACCESS));
    key.Close();
    EXPECT_FALSE(key.isOpen());
    stdstr text;
    std::uint32_t number = 0;
    EXPECT_FALSE(key.getString(u"Text", text));
    EXPECT_FALSE(key.getNumber(u"Text", number));
    EXPECT_FALSE(key.setString(u"Text", u"y"));
}

TEST(CRegistry, ValueOperationsLeaveTheErrorOfOpenAlone) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\K]\r\n");
    CRegistry key;
    EXPECT_FALSE(key.Open(HKEY_LOCAL_MACHINE, u"Missing", KEY_READ));
    EXPECT_EQ(key.lastError(), ERROR_FILE_NOT_FOUND);
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, u"K", KEY_READ));
    stdstr text;
    EXPECT_FALSE(key.getString(u"Missing", text));
    EXPECT_EQ(key.lastError(), ERROR_SUCCESS);
}

TEST(CRegistry, ErrorNumbersMapToTheErrnoOfTheSameMeaning) {
    EXPECT_EQ(RegErrorToErrno(ERROR_SUCCESS), 0);
    EXPECT_EQ(RegErrorToErrno(ERROR_FILE_NOT_FOUND), ENOENT);
    EXPECT_EQ(RegErrorToErrno(ERROR_ACCESS_DENIED), EACCES);
    EXPECT_EQ(RegErrorToErrno(ERROR_INVALID_HANDLE), EBADF);
    EXPECT_EQ(RegErrorToErrno(ERROR_DISK_FULL), ENOSPC);
    EXPECT_EQ(RegErrorToErrno(ERROR_KEY_DELETED), ENOENT);
    EXPECT_EQ(RegErrorToErrno(99999), EIO);
    EXPECT_EQ(RegErrorFromErrno(ENOENT, ERROR_CANTREAD), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegErrorFromErrno(EROFS, ERROR_CANTWRITE), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegErrorFromErrno(EPERM, ERROR_CANTWRITE), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegErrorFromErrno(EDQUOT, ERROR_CANTWRITE), ERROR_DISK_FULL);
    EXPECT_EQ(RegErrorFromErrno(EIO, ERROR_CANTWRITE), ERROR_CANTWRITE);
    EXPECT_EQ(RegErrorFromErrno(EIO, ERROR_CANTREAD), ERROR_CANTREAD);
}

} // namespace
