#include "foundation/Registry.h"

#include "foundation/DebugLog.h"
#include "foundation/RegStore.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <sstream>

namespace {

using Corvane::Registry;
using TestSupport::SandboxRoot;

const std::string Header = "Windows Registry Editor Version 5.00\r\n\r\n";
const std::u16string Quillgate = u"Software\\Velloran\\Quillgate";

void WriteMachineStore(const SandboxRoot& root, const std::string& body) {
    root.writeFile("var/lib/velloran/registry/machine.reg", Header + body);
}

void WriteUserStore(const SandboxRoot& root, const std::string& body) {
    root.writeFile("home/.config/velloran/user.reg", Header + body);
}

TEST(Registry, GetNumberOnAStringValueIsFalseAndLeavesTheResultAlone) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                            "\"iLang\"=\"1031\"\r\n"
                            "\"Short\"=hex(4):01,00\r\n");
    Registry registry(HKEY_LOCAL_MACHINE);
    std::uint32_t result = 77;
    EXPECT_FALSE(registry.getNumber(Quillgate, u"iLang", result));
    EXPECT_EQ(result, 77u);
    EXPECT_FALSE(registry.getNumber(Quillgate, u"Short", result));
    EXPECT_EQ(result, 77u);
    EXPECT_FALSE(registry.getNumber(Quillgate, u"Missing", result));
    EXPECT_EQ(result, 77u);
}

TEST(Registry, GetNumberReadsADword) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                            "\"iLang\"=dword:00000407\r\n"
                            "\"HidePopup\"=dword:ffffffff\r\n");
    Registry registry(HKEY_LOCAL_MACHINE);
    std::uint32_t result = 0;
    EXPECT_TRUE(registry.getNumber(Quillgate, u"iLang", result));
    EXPECT_EQ(result, 1031u);
    EXPECT_TRUE(registry.getNumber(u"SOFTWARE\\Velloran\\Quillgate", u"HIDEPOPUP", result));
    EXPECT_EQ(result, 0xffffffffu);
}

TEST(Registry, GetStringOnAValueOfZeroLengthIsEmptyAndTrue) {
    SandboxRoot root;
    WriteUserStore(root, "[HKEY_CURRENT_USER\\Software\\Velloran\\Quillgate]\r\n"
                         "\"Terminated\"=\"\"\r\n"
                         "\"NoData\"=hex(1):\r\n");
    Registry registry(HKEY_CURRENT_USER);
    std::u16string result = u"old";
    EXPECT_TRUE(registry.getString(Quillgate, u"Terminated", result));
    EXPECT_EQ(result, u"");
    result = u"old";
    EXPECT_TRUE(registry.getString(Quillgate, u"NoData", result));
    EXPECT_EQ(result, u"");
}

TEST(Registry, GetStringTakesTheDataUpToItsFirstNul) {
    SandboxRoot root;
    WriteUserStore(root, "[HKEY_CURRENT_USER\\K]\r\n"
                         "\"Two\"=hex(1):61,00,00,00,62,00,00,00\r\n"
                         "\"Number\"=dword:00000041\r\n"
                         "\"Odd\"=hex:41,00,42\r\n");
    Registry registry(HKEY_CURRENT_USER);
    std::u16string result;
    EXPECT_TRUE(registry.getString(u"K", u"Two", result));
    EXPECT_EQ(result, u"a");
    // As on Windows, the bytes of any type are read as text.
    EXPECT_TRUE(registry.getString(u"K", u"Number", result));
    EXPECT_EQ(result, u"A");
    EXPECT_TRUE(registry.getString(u"K", u"Odd", result));
    EXPECT_EQ(result, u"AB");
}

TEST(Registry, SetStringWithoutCreateOnAMissingKeyIsFalseAndMakesNothing) {
    SandboxRoot root;
    Registry registry(HKEY_LOCAL_MACHINE);
    EXPECT_FALSE(registry.setString(u"Software\\Velloran\\Quillgate\\4.0\\Settings", u"LastUpdate",
                                    u"1700000000", false));
    EXPECT_FALSE(std::filesystem::exists(root.file("var/lib/velloran/registry/machine.reg")));
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran]\r\n");
    const std::string before =
        SandboxRoot::readFile(root.file("var/lib/velloran/registry/machine.reg"));
    EXPECT_FALSE(registry.setString(u"Software\\Velloran\\Quillgate\\4.0\\Settings", u"LastUpdate",
                                    u"1700000000", false));
    EXPECT_EQ(SandboxRoot::readFile(root.file("var/lib/velloran/registry/machine.reg")), before);
    EXPECT_FALSE(
        registry.valueExists(u"Software\\Velloran\\Quillgate\\4.0\\Settings", u"LastUpdate"));
}

TEST(Registry, SetStringWithCreateMakesTheKeyAndWritesTheText) {
    SandboxRoot root;
    Registry registry(HKEY_CURRENT_USER);
    const std::u16string text = u"Français \"quoted\" C:\\path\\";
    ASSERT_TRUE(registry.setString(u"SOFTWARE\\Velloran\\Quillgate", u"Language", text, true));
    std::u16string result;
    EXPECT_TRUE(registry.getString(u"software\\velloran\\quillgate", u"language", result));
    EXPECT_EQ(result, text);
    // Once the key is there, no create is needed.
    ASSERT_TRUE(registry.setString(u"SOFTWARE\\Velloran\\Quillgate", u"Language", u"", false));
    EXPECT_TRUE(registry.getString(u"SOFTWARE\\Velloran\\Quillgate", u"Language", result));
    EXPECT_EQ(result, u"");
    EXPECT_EQ(SandboxRoot::readFile(root.file("home/.config/velloran/user.reg")),
              "Windows Registry Editor Version 5.00\n\n"
              "[HKEY_CURRENT_USER\\SOFTWARE]\n\n"
              "[HKEY_CURRENT_USER\\SOFTWARE\\Velloran]\n\n"
              "[HKEY_CURRENT_USER\\SOFTWARE\\Velloran\\Quillgate]\n"
              "\"Language\"=\"\"\n\n");
}

TEST(Registry, SetNumberWritesADword) {
    SandboxRoot root;
    Registry registry(HKEY_LOCAL_MACHINE);
    EXPECT_FALSE(registry.setNumber(Quillgate, u"HidePopup", 1, false));
    ASSERT_TRUE(registry.setNumber(Quillgate, u"HidePopup", 0x1e, true));
    std::uint32_t result = 0;
    EXPECT_TRUE(registry.getNumber(Quillgate, u"HidePopup", result));
    EXPECT_EQ(result, 0x1eu);
    EXPECT_NE(SandboxRoot::readFile(root.file("var/lib/velloran/registry/machine.reg"))
                  .find("\"HidePopup\"=dword:0000001e\n"),
              std::string::npos);
}

TEST(Registry, ValueExistsOnAValueWithEmptyDataIsTrue) {
    SandboxRoot root;
    WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                            "\"DebugOutput\"=hex:\r\n"
                            "\"Empty\"=\"\"\r\n");
    Registry registry(HKEY_LOCAL_MACHINE);
    EXPECT_TRUE(registry.valueExists(Quillgate, u"DebugOutput"));
    EXPECT_TRUE(registry.valueExists(u"software\\VELLORAN\\quillgate", u"debugoutput"));
    EXPECT_TRUE(registry.valueExists(Quillgate, u"Empty"));
    EXPECT_FALSE(registry.valueExists(Quillgate, u"Missing"));
    EXPECT_FALSE(registry.valueExists(u"Software\\Velloran\\Missing", u"DebugOutput"));
    EXPECT_FALSE(Registry(HKEY_CURRENT_USER).valueExists(Quillgate, u"DebugOutput"));
}

TEST(Registry, DeleteValueRemovesOnlyThatValue) {
    SandboxRoot root;
    Registry registry(HKEY_CURRENT_USER);
    ASSERT_TRUE(registry.setNumber(u"K", u"A", 1, true));
    ASSERT_TRUE(registry.setNumber(u"K", u"B", 2, true));
    EXPECT_TRUE(registry.deleteValue(u"k", u"a"));
    EXPECT_FALSE(registry.valueExists(u"K", u"A"));
    EXPECT_TRUE(registry.valueExists(u"K", u"B"));
    EXPECT_FALSE(registry.deleteValue(u"K", u"A"));
    EXPECT_FALSE(registry.deleteValue(u"Missing", u"B"));
}

TEST(Registry, AnUnknownRootAnswersFalse) {
    SandboxRoot root;
    Registry registry(0x80000003u);
    std::u16string text;
    std::uint32_t number = 5;
    EXPECT_FALSE(registry.valueExists(u"K", u"V"));
    EXPECT_FALSE(registry.getString(u"K", u"V", text));
    EXPECT_FALSE(registry.getNumber(u"K", u"V", number));
    EXPECT_FALSE(registry.setString(u"K", u"V", u"x", true));
    EXPECT_FALSE(registry.setNumber(u"K", u"V", 1, true));
    EXPECT_EQ(number, 5u);
}

// The lines of the debug log with their date and thread cut off.
std::vector<std::string> DebugLogMessages(const std::string& path) {
    std::vector<std::string> messages;
    std::istringstream lines(SandboxRoot::readFile(path));
    std::string line;
    while (std::getline(lines, line)) {
        const auto first = line.find(" | ");
        const auto second = first == std::string::npos ? first : line.find(" | ", first + 3);
        messages.push_back(second == std::string::npos ? "<bad line: " + line + ">"
                                                       : line.substr(second + 3));
    }
    return messages;
}

// Compares the debug log's messages with `expected`; on a difference they go to stderr,
// where the death test shows them.
bool DebugLogHolds(const std::vector<std::string>& expected) {
    const auto messages = DebugLogMessages(SystemPaths::TempFolder() + "QGDebugLog_" +
                                           SystemPaths::ProgramFileName() + ".txt");
    if (messages == expected)
        return true;
    for (const auto& message : messages)
        std::fprintf(stderr, "[%s]\n", message.c_str());
    return false;
}

// The debug log decides once per process whether it is on, so the calls run in a freshly
// started child (not a fork, which would inherit the parent's decision) whose machine store
// holds "DebugOutput".
TEST(Registry, FailuresAndWritesLeaveTheirLinesInTheDebugLog) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            SandboxRoot root;
            WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                                    "\"DebugOutput\"=dword:00000001\r\n");
            Registry machine(HKEY_LOCAL_MACHINE);
            Registry user(HKEY_CURRENT_USER);
            std::u16string text;
            std::uint32_t number = 0;
            bool ok = machine.valueExists(Quillgate, u"DebugOutput"); // writes nothing
            ok = !machine.valueExists(u"Software\\Missing", u"X") && ok;
            ok = !machine.getNumber(u"Software\\Missing", u"X", number) && ok;
            ok = !user.getString(u"Software\\Missing", u"X", text) && ok;
            ok = !machine.getString(Quillgate, u"NoSuchValue", text) && ok;
            ok = !user.setString(u"Software\\Velloran\\Quillgate", u"Language", u"x", false) && ok;
            ok = user.setString(u"Software\\Velloran\\Quillgate", u"Language", u"x", true) && ok;
            ok = user.setNumber(u"Software\\Velloran\\Quillgate", u"N", 3, false) && ok;
            ok = user.setNumber(u"Software\\New", u"N", 3, true) && ok;
            ok = DebugLogHolds({
                     "RegistryError on Open Key Software\\Missing : 2",
                     "RegistryError on Get Size of Key Software\\Velloran\\Quillgate : 2",
                     "Creating Registry Key",
                     "0 result when Creating Registry Key",
                     "Setting Value",
                     "Setting Value - OK",
                     "Creating Registry Key",
                     "0 result when Creating Registry Key",
                     "Setting Value",
                     "Setting Value - OK",
                 }) &&
                 ok;
            std::_Exit(ok ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(Registry, AFailedCreateLeavesItsErrorInTheDebugLog) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            SandboxRoot root;
            WriteMachineStore(root, "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\r\n"
                                    "\"DebugOutput\"=\"\"\r\n");
            // The store's folder is a file: no key can be made below it.
            root.writeFile("home/.config/velloran", "not a folder");
            const bool failed =
                !Registry(HKEY_CURRENT_USER).setNumber(u"Software\\X", u"N", 1, true);
            std::_Exit(failed && DebugLogHolds({
                                     "Creating Registry Key",
                                     "3 result when Creating Registry Key",
                                 })
                           ? 0
                           : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
