#include "foundation/RegStore.h"

#include "foundation/RegDocument.h"
#include "foundation/RegistryTypes.h"
#include "foundation/SystemPaths.h"

#include "support/SandboxRoot.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include "foundation/stdstr.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Corvane::RegDocument;
using Corvane::RegStore;
using TestSupport::SandboxRoot;

using Value = RegDocument::Value;

const std::string Header = "Windows Registry Editor Version 5.00\n\n";

std::vector<std::uint8_t> Bytes(std::initializer_list<int> list) {
    std::vector<std::uint8_t> bytes;
    for (const int b : list)
        bytes.push_back(static_cast<std::uint8_t>(b));
    return bytes;
}

std::u16string TextOf(const RegDocument& document, std::u16string_view key,
                      std::u16string_view name) {
    const Value* value = document.findValue(key, name);
    return value ? value->asText() : u"<missing>";
}

std::uint32_t NumberOf(const Value& value) {
    EXPECT_EQ(value.type, REG_DWORD);
    EXPECT_EQ(value.data.size(), 4u);
    if (value.data.size() != 4)
        return 0;
    return value.data[0] | (value.data[1] << 8) | (value.data[2] << 16) |
           (static_cast<std::uint32_t>(value.data[3]) << 24);
}

std::string Utf16LeWithMark(const std::u16string& text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t c : text) {
        bytes.push_back(static_cast<char>(c & 0xFF));
        bytes.push_back(static_cast<char>(c >> 8));
    }
    return bytes;
}

mode_t ModeOf(const std::string& path) {
    struct stat st {};
    EXPECT_EQ(::stat(path.c_str(), &st), 0) << path;
    return st.st_mode & 07777;
}

// The child's exit code, or -1 when it did not exit normally.
int WaitForChild(pid_t pid) {
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

// ---- The text form ----

TEST(RegDocument, ReadsTheValuesOfEachKind) {
    const std::string text = Header + "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\n"
                                      "\"Name\"=\"text\"\n"
                                      "\"Level\"=dword:0000001e\n"
                                      "@=\"default\"\n"
                                      "\"Blob\"=hex:01,02,ff\n"
                                      "\"Big\"=hex(b):01,00,00,00,00,00,00,00\n"
                                      "\"Path\"=hex(2):25,00,00,00\n"
                                      "\"List\"=hex(7):61,00,00,00,00,00\n";
    const RegDocument document = RegDocument::parse(text, HKEY_LOCAL_MACHINE);
    const std::u16string key = u"Software\\Velloran\\Quillgate";
    EXPECT_EQ(TextOf(document, key, u"Name"), u"text");
    ASSERT_NE(document.findValue(key, u"Level"), nullptr);
    EXPECT_EQ(NumberOf(*document.findValue(key, u"Level")), 30u);
    EXPECT_EQ(TextOf(document, key, u""), u"default");
    ASSERT_NE(document.findValue(key, u"Blob"), nullptr);
    EXPECT_EQ(document.findValue(key, u"Blob")->type, REG_BINARY);
    EXPECT_EQ(document.findValue(key, u"Blob")->data, Bytes({1, 2, 0xff}));
    ASSERT_NE(document.findValue(key, u"Big"), nullptr);
    EXPECT_EQ(document.findValue(key, u"Big")->type, REG_QWORD);
    EXPECT_EQ(document.findValue(key, u"Big")->data.size(), 8u);
    ASSERT_NE(document.findValue(key, u"Path"), nullptr);
    EXPECT_EQ(document.findValue(key, u"Path")->type, REG_EXPAND_SZ);
    ASSERT_NE(document.findValue(key, u"List"), nullptr);
    EXPECT_EQ(document.findValue(key, u"List")->type, REG_MULTI_SZ);
    EXPECT_EQ(document.findValue(key, u"Name")->data,
              Bytes({'t', 0, 'e', 0, 'x', 0, 't', 0, 0, 0}));
}

TEST(RegDocument, EveryParentOfAKeyExists) {
    const RegDocument document =
        RegDocument::parse(Header + "[HKEY_LOCAL_MACHINE\\A\\B\\C]\n", HKEY_LOCAL_MACHINE);
    EXPECT_NE(document.findKey(u""), nullptr);
    EXPECT_NE(document.findKey(u"A"), nullptr);
    EXPECT_NE(document.findKey(u"A\\B"), nullptr);
    EXPECT_NE(document.findKey(u"A\\B\\C"), nullptr);
    EXPECT_EQ(document.findKey(u"A\\C"), nullptr);
}

TEST(RegDocument, KeysAndValueNamesCompareWithoutRegardToCase) {
    const RegDocument document =
        RegDocument::parse(Header + "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\n"
                                    "\"DebugOutput\"=\"1\"\n"
                                    "[HKEY_LOCAL_MACHINE\\Software\\Ärger\\Σίσυφος]\n"
                                    "\"Größe\"=\"2\"\n",
                           HKEY_LOCAL_MACHINE);
    EXPECT_EQ(TextOf(document, u"SOFTWARE\\velloran\\QUILLGATE", u"debugoutput"), u"1");
    EXPECT_EQ(TextOf(document, u"software\\ärger\\ΣΊΣΥΦΟΣ", u"GRÖSSE"), u"<missing>");
    EXPECT_EQ(TextOf(document, u"software\\ÄRGER\\ΣΊΣΥΦΟΣ", u"GRÖßE"), u"2");
}

TEST(RegDocument, TheFirstSpellingOfANameIsKept) {
    const RegDocument document =
        RegDocument::parse(Header + "[HKEY_LOCAL_MACHINE\\Software\\Velloran]\n"
                                    "\"Language\"=\"one\"\n"
                                    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\VELLORAN\\Quillgate]\n"
                                    "[HKEY_LOCAL_MACHINE\\software\\velloran]\n"
                                    "\"LANGUAGE\"=\"two\"\n",
                           HKEY_LOCAL_MACHINE);
    ASSERT_EQ(document.keys().size(), 4u);
    EXPECT_EQ(document.keys()[1].path, u"Software");
    EXPECT_EQ(document.keys()[2].path, u"Software\\Velloran");
    EXPECT_EQ(document.keys()[3].path, u"Software\\Velloran\\Quillgate");
    ASSERT_EQ(document.keys()[2].values.size(), 1u);
    EXPECT_EQ(document.keys()[2].values[0].name, u"Language");
    EXPECT_EQ(document.keys()[2].values[0].asText(), u"two");
}

TEST(RegDocument, EscapesAreReadAndOtherBackslashesStandForThemselves) {
    const RegDocument document = RegDocument::parse(
        Header + "[HKEY_CURRENT_USER\\K]\n"
                 "\"a \\\"quoted\\\" \\\\name\"=\"C:\\\\Program Files\\\\\\\"x\\\"\"\n"
                 "\"Plain\"=\"a\\qb\"\n",
        HKEY_CURRENT_USER);
    EXPECT_EQ(TextOf(document, u"K", u"a \"quoted\" \\name"), u"C:\\Program Files\\\"x\"");
    EXPECT_EQ(TextOf(document, u"K", u"Plain"), u"a\\qb");
}

TEST(RegDocument, IsWrittenInTheRegeditForm) {
    RegDocument document(HKEY_LOCAL_MACHINE);
    document.addKey(u"Software\\Velloran\\Quillgate");
    const std::u16string key = u"Software\\Velloran\\Quillgate";
    document.setValue(key, Value::text(u"Say \"hi\"", u"C:\\dir \"x\""));
    document.setValue(key, Value::number(u"Level", 0x1e));
    document.setValue(key, Value::text(u"", u"default"));
    document.setValue(key, Value{u"Blob", REG_BINARY, Bytes({0, 0xab})});
    document.setValue(key, Value{u"Big", REG_QWORD, Bytes({1, 0, 0, 0, 0, 0, 0, 0})});
    document.setValue(key, Value{u"Empty", REG_BINARY, {}});
    EXPECT_EQ(document.serialise(), Header + "[HKEY_LOCAL_MACHINE\\Software]\n"
                                             "\n"
                                             "[HKEY_LOCAL_MACHINE\\Software\\Velloran]\n"
                                             "\n"
                                             "[HKEY_LOCAL_MACHINE\\Software\\Velloran\\Quillgate]\n"
                                             "\"Say \\\"hi\\\"\"=\"C:\\\\dir \\\"x\\\"\"\n"
                                             "\"Level\"=dword:0000001e\n"
                                             "@=\"default\"\n"
                                             "\"Blob\"=hex:00,ab\n"
                                             "\"Big\"=hex(b):01,00,00,00,00,00,00,00\n"
                                             "\"Empty\"=hex:\n"
                                             "\n");
}

TEST(RegDocument, LongHexDataIsWrappedAndReadBack) {
    RegDocument document(HKEY_CURRENT_USER);
    document.addKey(u"K");
    std::vector<std::uint8_t> data;
    for (int i = 0; i < 300; ++i)
        data.push_back(static_cast<std::uint8_t>(i));
    document.setValue(u"K", Value{u"Blob", REG_BINARY, data});
    const std::string text = document.serialise();
    std::istringstream lines(text);
    std::string line;
    int continued = 0;
    while (std::getline(lines, line)) {
        EXPECT_LE(line.size(), 80u) << line;
        if (!line.empty() && line.back() == '\\')
            ++continued;
    }
    EXPECT_GT(continued, 5);
    EXPECT_EQ(RegDocument::parse(text, HKEY_CURRENT_USER), document);
}

TEST(RegDocument, EscapesAndUnusualTextsSurviveARoundTrip) {
    RegDocument document(HKEY_CURRENT_USER);
    const std::u16string key = u"Software\\Ünïcødé ключ\\日本\\a]b";
    document.addKey(key);
    const std::vector<std::u16string> texts = {u"",
                                               u"\\",
                                               u"\"",
                                               u"\\\"",
                                               u"ends with backslash\\",
                                               u"two\nlines",
                                               u"cr\rin it",
                                               u"tab\there",
                                               u"emoji \U0001F600",
                                               u"=\"x\"=dword:1",
                                               std::u16string(u"nul\0inside", 10),
                                               u"[HKEY_CURRENT_USER\\Fake]"};
    for (std::size_t i = 0; i < texts.size(); ++i)
        document.setValue(key, Value::text(u"v" + std::u16string(1, u'a' + i), texts[i]));
    document.setValue(key, Value::text(u"@", u"not the default"));
    document.setValue(key, Value::text(u"lone surrogate", std::u16string(1, char16_t(0xD800))));
    const RegDocument again = RegDocument::parse(document.serialise(), HKEY_CURRENT_USER);
    EXPECT_EQ(again, document);
    EXPECT_EQ(TextOf(again, key, u"@"), u"not the default");
    EXPECT_EQ(again.findValue(key, u""), nullptr);
}

TEST(RegDocument, TextsWithLineBreaksAreWrittenAsHex) {
    RegDocument document(HKEY_CURRENT_USER);
    document.addKey(u"K");
    document.setValue(u"K", Value::text(u"Two", u"a\nb"));
    EXPECT_EQ(document.serialise(),
              Header + "[HKEY_CURRENT_USER\\K]\n\"Two\"=hex(1):61,00,0a,00,62,00,00,00\n\n");
}

TEST(RegDocument, AUtf8MarkAndUtf16FilesAreRead) {
    const std::string text = "[HKEY_CURRENT_USER\\Software\\Velloran\\Quillgate]\r\n"
                             "\"Language\"=\"Français\"\r\n";
    const RegDocument withMark =
        RegDocument::parse("\xEF\xBB\xBF" + Header + text, HKEY_CURRENT_USER);
    EXPECT_EQ(TextOf(withMark, u"Software\\Velloran\\Quillgate", u"Language"), u"Français");
    const RegDocument wide =
        RegDocument::parse(Utf16LeWithMark(u"Windows Registry Editor Version 5.00\r\n\r\n"
                                           u"[HKEY_CURRENT_USER\\Software\\Velloran\\Quillgate]\r\n"
                                           u"\"Language\"=\"日本語\"\r\n"
                                           u"\"Count\"=dword:00000007\r\n"),
                           HKEY_CURRENT_USER);
    EXPECT_EQ(TextOf(wide, u"Software\\Velloran\\Quillgate", u"Language"), u"日本語");
    ASSERT_NE(wide.findValue(u"Software\\Velloran\\Quillgate", u"Count"), nullptr);
    EXPECT_EQ(NumberOf(*wide.findValue(u"Software\\Velloran\\Quillgate", u"Count")), 7u);
}

TEST(RegDocument, KeysOfAnotherRootAreNotTaken) {
    const RegDocument document = RegDocument::parse(Header + "[HKEY_CURRENT_USER\\Software]\n"
                                                             "\"User\"=\"1\"\n"
                                                             "[HKEY_LOCAL_MACHINEX\\Software]\n"
                                                             "\"Other\"=\"2\"\n",
                                                    HKEY_LOCAL_MACHINE);
    EXPECT_EQ(document.keys().size(), 1u);
    EXPECT_TRUE(document.keys()[0].values.empty());
}

TEST(RegDocument, MalformedLinesAreSkippedAndTheRestIsRead) {
    const std::string text = Header + "[HKEY_CURRENT_USER\\K]\n"
                                      "\"Good1\"=\"1\"\n"
                                      "\"NoEnd=\"1\"\n"
                                      "\"Short\"=dword:1e\n"
                                      "\"Long\"=dword:000000001\n"
                                      "\"BadHex\"=hex:1,2\n"
                                      "\"BadType\"=hex(z):01\n"
                                      "\"Trailing\"=\"x\" y\n"
                                      "\"Unknown\"=word:1\n"
                                      "\"NoEquals\" \"x\"\n"
                                      "\"Ctrl\x01Name\"=\"x\"\n"
                                      "garbage line\n"
                                      "\"Good2\"=dword:00000002\n"
                                      "[HKEY_CURRENT_USER\\Cut\n"
                                      "\"Lost\"=\"belongs to no key\"\n"
                                      "[HKEY_CURRENT_USER\\L]\n"
                                      "\"Good3\"=\"3\"\n";
    const RegDocument document = RegDocument::parse(text, HKEY_CURRENT_USER);
    ASSERT_NE(document.findKey(u"K"), nullptr);
    ASSERT_EQ(document.findKey(u"K")->values.size(), 2u);
    EXPECT_EQ(TextOf(document, u"K", u"Good1"), u"1");
    EXPECT_NE(document.findValue(u"K", u"Good2"), nullptr);
    EXPECT_EQ(document.findValue(u"K", u"Lost"), nullptr);
    EXPECT_EQ(TextOf(document, u"L", u"Good3"), u"3");
}

TEST(RegDocument, AHexValueCutOffDoesNotSwallowTheNextKey) {
    const std::string text = Header + "[HKEY_CURRENT_USER\\A]\n"
                                      "\"Cut\"=hex:01,02,\\\n"
                                      "[HKEY_CURRENT_USER\\B]\n"
                                      "\"After\"=\"here\"\n";
    const RegDocument document = RegDocument::parse(text, HKEY_CURRENT_USER);
    EXPECT_EQ(document.findValue(u"A", u"Cut"), nullptr);
    EXPECT_EQ(TextOf(document, u"B", u"After"), u"here");
    EXPECT_EQ(document.findValue(u"A", u"After"), nullptr);
}

// A document with values of every form, the long hex one spanning several lines.
RegDocument SampleDocument() {
    RegDocument document(HKEY_LOCAL_MACHINE);
    document.addKey(u"Software\\Velloran\\Quillgate");
    document.addKey(u"Software\\Velloran\\VLQGSAGui");
    const std::u16string a = u"Software\\Velloran\\Quillgate";
    const std::u16string b = u"Software\\Velloran\\VLQGSAGui";
    document.setValue(a, Value::text(u"Language", u"English (US)"));
    document.setValue(a, Value::number(u"iLang", 1033));
    document.setValue(a, Value::text(u"", u"default \"quoted\" \\ value"));
    std::vector<std::uint8_t> blob;
    for (int i = 0; i < 100; ++i)
        blob.push_back(static_cast<std::uint8_t>(i * 7));
    document.setValue(a, Value{u"Blob", REG_BINARY, blob});
    document.setValue(b, Value::number(u"Log Level", 0x3f));
    document.setValue(b, Value::text(u"QGSAGuiLogFile", u"/var/log/quillgate.txt"));
    document.setValue(b, Value{u"Stamp", REG_QWORD, Bytes({1, 2, 3, 4, 5, 6, 7, 8})});
    document.setValue(b, Value::text(u"Last", u"end"));
    return document;
}

struct ValueAt {
    std::u16string key;
    Value value;
};

std::vector<ValueAt> AllValues(const RegDocument& document) {
    std::vector<ValueAt> values;
    for (const auto& key : document.keys())
        for (const auto& value : key.values)
            values.push_back({key.path, value});
    return values;
}

TEST(RegDocument, AFileCutAnywhereKeepsEveryValueBeforeTheCut) {
    const RegDocument full = SampleDocument();
    const std::string text = full.serialise();
    const auto values = AllValues(full);
    // Where each value's text ends: the line end after its last line.
    std::vector<std::size_t> ends;
    {
        std::size_t at = 0;
        for (const auto& [key, value] : values) {
            std::string name = "\"" + stdstr::fromTString(value.name) + "\"=";
            if (value.name.empty())
                name = "@=";
            at = text.find(name, at);
            ASSERT_NE(at, std::string::npos);
            at = text.find('\n', at);
            while (text[at - 1] == '\\')
                at = text.find('\n', at + 1);
            ends.push_back(at);
        }
    }
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        const RegDocument part = RegDocument::parse(text.substr(0, cut), HKEY_LOCAL_MACHINE);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Value* found = part.findValue(values[i].key, values[i].value.name);
            if (ends[i] < cut) {
                ASSERT_NE(found, nullptr) << "cut " << cut << " value " << i;
                EXPECT_EQ(*found, values[i].value) << "cut " << cut;
            } else if (found && values[i].value.type != REG_BINARY &&
                       values[i].value.type != REG_QWORD) {
                // A cut text or number is never taken for a shorter one.
                EXPECT_EQ(*found, values[i].value) << "cut " << cut << " value " << i;
            }
        }
    }
}

TEST(RegDocument, ADamagedLineInTheMiddleLosesOnlyItsOwnValue) {
    const RegDocument full = SampleDocument();
    const std::string text = full.serialise();
    const auto values = AllValues(full);
    std::size_t lineStart = 0;
    while (lineStart < text.size()) {
        const std::size_t lineEnd = text.find('\n', lineStart);
        const std::size_t length = lineEnd - lineStart;
        if (length > 1 && text[lineStart] == '"') {
            const std::string damaged =
                text.substr(0, lineStart + length / 2) + text.substr(lineEnd);
            const RegDocument part = RegDocument::parse(damaged, HKEY_LOCAL_MACHINE);
            std::size_t kept = 0;
            for (const auto& [key, value] : values) {
                const Value* found = part.findValue(key, value.name);
                if (found && *found == value)
                    ++kept;
            }
            EXPECT_EQ(kept, values.size() - 1) << damaged;
        }
        lineStart = lineEnd + 1;
    }
}

TEST(RegDocument, OversizedValuesAndNamesAreSkipped) {
    const std::string hugeHex = "\"Huge\"=hex:" + [] {
        std::string list;
        for (std::size_t i = 0; i <= RegDocument::MaxValueBytes; ++i)
            list += i ? ",00" : "00";
        return list;
    }() + "\n";
    const std::string longName =
        "\"" + std::string(RegDocument::MaxValueNameLength + 1, 'n') + "\"=\"x\"\n";
    const std::string longKey =
        "[HKEY_CURRENT_USER\\" + std::string(RegDocument::MaxKeyNameLength + 1, 'k') + "]\n";
    const RegDocument document =
        RegDocument::parse(Header + "[HKEY_CURRENT_USER\\K]\n" + hugeHex + longName +
                               "\"Fine\"=\"1\"\n" + longKey + "\"Lost\"=\"1\"\n",
                           HKEY_CURRENT_USER);
    ASSERT_NE(document.findKey(u"K"), nullptr);
    ASSERT_EQ(document.findKey(u"K")->values.size(), 1u);
    EXPECT_EQ(TextOf(document, u"K", u"Fine"), u"1");
    EXPECT_EQ(document.keys().size(), 2u);
}

TEST(RegDocument, RandomBytesNeverBreakTheParser) {
    std::mt19937 random(12345);
    const std::string text = SampleDocument().serialise();
    for (int round = 0; round < 2000; ++round) {
        std::string bytes = text;
        const int flips = 1 + static_cast<int>(random() % 8);
        for (int i = 0; i < flips; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
        if (round % 3 == 0)
            bytes = "\xFF\xFE" + bytes;
        const RegDocument once = RegDocument::parse(bytes, HKEY_LOCAL_MACHINE);
        const RegDocument twice = RegDocument::parse(once.serialise(), HKEY_LOCAL_MACHINE);
        ASSERT_EQ(twice, once) << "round " << round;
    }
}

TEST(RegDocument, NamesTheStoreCannotHoldAreRefused) {
    std::u16string path;
    EXPECT_TRUE(RegDocument::normaliseKeyPath(u"\\Software\\\\Velloran\\", path));
    EXPECT_EQ(path, u"Software\\Velloran");
    EXPECT_FALSE(RegDocument::normaliseKeyPath(u"Soft\nware", path));
    EXPECT_FALSE(RegDocument::normaliseKeyPath(std::u16string(256, u'k'), path));
    EXPECT_TRUE(RegDocument::normaliseKeyPath(std::u16string(255, u'k'), path));
    EXPECT_TRUE(RegDocument::isValidValueName(u""));
    EXPECT_FALSE(RegDocument::isValidValueName(u"a\tb"));
    EXPECT_FALSE(RegDocument::isValidValueName(std::u16string(1, char16_t(0xDC00))));
}

// ---- The store files ----

TEST(RegStore, EachRootHasItsFile) {
    SandboxRoot root;
    EXPECT_EQ(RegStore(HKEY_LOCAL_MACHINE).path(),
              root.file("var/lib/velloran/registry/machine.reg"));
    EXPECT_EQ(RegStore(HKEY_CURRENT_USER).path(), root.file("home/.config/velloran/user.reg"));
    EXPECT_EQ(RegStore(0x80000003u).path(), "");
    Value value;
    EXPECT_EQ(RegStore(0x80000003u).queryValue(u"K", u"V", value), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegStore(0x80000003u).createKey(u"K"), ERROR_INVALID_HANDLE);
}

TEST(RegStore, NoStoreMeansNoKey) {
    SandboxRoot root;
    RegStore store(HKEY_LOCAL_MACHINE);
    Value value;
    EXPECT_EQ(store.openKey(u"Software", KEY_READ), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(store.queryValue(u"Software", u"V", value), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(store.openKey(u"", KEY_READ), ERROR_SUCCESS);
}

TEST(RegStore, AWriteMakesTheFoldersAndAUtf8File) {
    SandboxRoot root;
    RegStore user(HKEY_CURRENT_USER);
    std::uint32_t disposition = 0;
    ASSERT_EQ(user.createKey(u"Software\\Velloran\\Quillgate", &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
    ASSERT_EQ(user.setValue(u"software\\velloran\\quillgate", Value::text(u"Language", u"Čeština")),
              ERROR_SUCCESS);
    EXPECT_EQ(ModeOf(root.file("home/.config/velloran")), 0700u);
    EXPECT_EQ(ModeOf(user.path()), 0600u);
    EXPECT_EQ(SandboxRoot::readFile(user.path()),
              Header + "[HKEY_CURRENT_USER\\Software]\n\n"
                       "[HKEY_CURRENT_USER\\Software\\Velloran]\n\n"
                       "[HKEY_CURRENT_USER\\Software\\Velloran\\Quillgate]\n"
                       "\"Language\"=\"Čeština\"\n\n");

    RegStore machine(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(machine.createKey(u"Software"), ERROR_SUCCESS);
    EXPECT_EQ(ModeOf(root.file("var/lib/velloran/registry")), 0775u);
    EXPECT_EQ(ModeOf(machine.path()), 0644u);
    EXPECT_TRUE(std::filesystem::exists(machine.path() + ".lock"));
    // Nothing but the store and its lock file is left in the folder.
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(root.file("var/lib/velloran/registry")))
        ++entries;
    EXPECT_EQ(entries, 2u);
}

TEST(RegStore, TheNextWriterRemovesWhatADeadWriterLeft) {
    SandboxRoot root;
    RegStore store(HKEY_CURRENT_USER);
    ASSERT_EQ(store.createKey(u"K"), ERROR_SUCCESS);
    const std::string folder = root.file("home/.config/velloran");
    root.writeFile("home/.config/velloran/.user.reg.a1B2c3", "half a store");
    root.writeFile("home/.config/velloran/.user.reg.keep", "not ours");
    root.writeFile("home/.config/velloran/other.reg", "not ours");
    ASSERT_EQ(store.setValue(u"K", Value::number(u"N", 1)), ERROR_SUCCESS);
    EXPECT_FALSE(std::filesystem::exists(folder + "/.user.reg.a1B2c3"));
    EXPECT_TRUE(std::filesystem::exists(folder + "/.user.reg.keep"));
    EXPECT_TRUE(std::filesystem::exists(folder + "/other.reg"));
}

TEST(RegStore, CreatingAnExistingKeyWritesNothing) {
    SandboxRoot root;
    RegStore store(HKEY_CURRENT_USER);
    ASSERT_EQ(store.createKey(u"A\\B"), ERROR_SUCCESS);
    struct stat before {};
    ASSERT_EQ(::stat(store.path().c_str(), &before), 0);
    std::uint32_t disposition = 0;
    EXPECT_EQ(store.createKey(u"a\\b", &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    EXPECT_EQ(store.createKey(u"A", &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    struct stat after {};
    ASSERT_EQ(::stat(store.path().c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST(RegStore, ValuesAreSetReplacedAndDeleted) {
    SandboxRoot root;
    RegStore store(HKEY_CURRENT_USER);
    EXPECT_EQ(store.setValue(u"Missing", Value::number(u"N", 1)), ERROR_KEY_DELETED);
    ASSERT_EQ(store.createKey(u"K"), ERROR_SUCCESS);
    ASSERT_EQ(store.setValue(u"K", Value::number(u"Count", 1)), ERROR_SUCCESS);
    ASSERT_EQ(store.setValue(u"k", Value::number(u"COUNT", 2)), ERROR_SUCCESS);
    Value value;
    ASSERT_EQ(store.queryValue(u"K", u"count", value), ERROR_SUCCESS);
    EXPECT_EQ(value.name, u"Count");
    EXPECT_EQ(NumberOf(value), 2u);
    EXPECT_EQ(store.deleteValue(u"K", u"cOUNT"), ERROR_SUCCESS);
    EXPECT_EQ(store.queryValue(u"K", u"Count", value), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(store.deleteValue(u"K", u"Count"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(store.setValue(u"K", Value::text(u"Bad\nName", u"x")), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(
        store.setValue(u"K", Value{u"Big", REG_BINARY,
                                   std::vector<std::uint8_t>(RegDocument::MaxValueBytes + 1)}),
        ERROR_INVALID_PARAMETER);
}

TEST(RegStore, AFileRewrittenInPlaceIsReadAgain) {
    SandboxRoot root;
    RegStore store(HKEY_CURRENT_USER);
    root.writeFile("home/.config/velloran/user.reg", "");
    const int fd = ::open(store.path().c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(fd, 0);
    Value value;
    // Same size, same inode, and within one tick of the file system's clock the same time
    // stamps as the round before: only the content tells the rounds apart.
    for (std::uint32_t round = 0; round < 500; ++round) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%08x", round);
        const std::string text = Header + "[HKEY_CURRENT_USER\\K]\n\"N\"=dword:" + digits + "\n";
        ASSERT_EQ(::pwrite(fd, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
        ASSERT_EQ(store.queryValue(u"K", u"N", value), ERROR_SUCCESS);
        ASSERT_EQ(NumberOf(value), round);
    }
    ::close(fd);
}

TEST(RegStore, ASettledStoreReplacedByAnotherProcessIsReadAgain) {
    SandboxRoot root;
    RegStore store(HKEY_CURRENT_USER);
    ASSERT_EQ(store.createKey(u"K"), ERROR_SUCCESS);
    ASSERT_EQ(store.setValue(u"K", Value::number(u"N", 1)), ERROR_SUCCESS);
    // Once its time stamps are old enough, the file is known by its stat alone.
    ASSERT_TRUE(TestSupport::WaitFor(
        [&] {
            struct stat st {};
            return ::stat(store.path().c_str(), &st) == 0 &&
                   std::time(nullptr) - std::max(st.st_mtime, st.st_ctime) >= 3;
        },
        std::chrono::seconds(10)));
    Value value;
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(store.queryValue(u"K", u"N", value), ERROR_SUCCESS);
        EXPECT_EQ(NumberOf(value), 1u);
    }
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0)
        ::_exit(RegStore(HKEY_CURRENT_USER).setValue(u"K", Value::number(u"N", 2)));
    ASSERT_EQ(WaitForChild(child), 0);
    ASSERT_EQ(store.queryValue(u"K", u"N", value), ERROR_SUCCESS);
    EXPECT_EQ(NumberOf(value), 2u);
}

TEST(RegStore, AProcessThatMayNotWriteTheMachineStoreIsDeniedAccess) {
    SandboxRoot root;
    RegStore store(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(store.createKey(u"Software\\Velloran"), ERROR_SUCCESS);
    ASSERT_EQ(store.setValue(u"Software\\Velloran", Value::number(u"N", 1)), ERROR_SUCCESS);
    const bool asRoot = ::geteuid() == 0;
    if (asRoot) {
        // The writer will be an ordinary user, who may pass through the sandbox but not
        // write the store's folder (owned by root, 0775).
        for (const char* folder : {"", "/var", "/var/lib", "/var/lib/velloran"})
            std::filesystem::permissions(
                root.path() + folder,
                std::filesystem::perms::owner_all | std::filesystem::perms::group_read |
                    std::filesystem::perms::group_exec | std::filesystem::perms::others_read |
                    std::filesystem::perms::others_exec);
        ::chmod(store.path().c_str(), 0644);
    } else {
        ::chmod(root.file("var/lib/velloran/registry").c_str(), 0555);
    }
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (asRoot && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(10);
        RegStore::dropCache();
        RegStore machine(HKEY_LOCAL_MACHINE);
        Value value;
        if (machine.queryValue(u"Software\\Velloran", u"N", value) != ERROR_SUCCESS)
            ::_exit(11);
        if (machine.openKey(u"Software\\Velloran", KEY_READ) != ERROR_SUCCESS)
            ::_exit(12);
        if (machine.openKey(u"Software\\Velloran", KEY_WRITE) != ERROR_ACCESS_DENIED)
            ::_exit(13);
        if (machine.setValue(u"Software\\Velloran", Value::number(u"N", 2)) != ERROR_ACCESS_DENIED)
            ::_exit(14);
        if (machine.createKey(u"Software\\Other") != ERROR_ACCESS_DENIED)
            ::_exit(15);
        if (machine.createKey(u"Software\\Velloran") != ERROR_ACCESS_DENIED)
            ::_exit(16);
        ::_exit(0);
    }
    EXPECT_EQ(WaitForChild(child), 0);
    ::chmod(root.file("var/lib/velloran/registry").c_str(), 0775);
    Value value;
    ASSERT_EQ(store.queryValue(u"Software\\Velloran", u"N", value), ERROR_SUCCESS);
    EXPECT_EQ(NumberOf(value), 1u);
}

TEST(RegStore, TwoProcessesWritingAtOnceLoseNoValue) {
    SandboxRoot root;
    constexpr int PerProcess = 1000;
    ASSERT_EQ(RegStore(HKEY_CURRENT_USER).createKey(u"Software\\Race"), ERROR_SUCCESS);
    int start[2];
    ASSERT_EQ(::pipe(start), 0);
    pid_t children[2];
    for (int c = 0; c < 2; ++c) {
        children[c] = ::fork();
        ASSERT_NE(children[c], -1);
        if (children[c] == 0) {
            ::close(start[1]);
            char ignored;
            // Returns when the parent closes its end: both writers start together.
            if (::read(start[0], &ignored, 1) != 0)
                ::_exit(20);
            RegStore store(HKEY_CURRENT_USER);
            for (int i = 0; i < PerProcess; ++i) {
                const std::u16string name =
                    stdstr::toTString("P" + std::to_string(c) + "-" + std::to_string(i));
                if (store.setValue(u"Software\\Race",
                                   Value::number(name, static_cast<std::uint32_t>(i))) !=
                    ERROR_SUCCESS)
                    ::_exit(21);
            }
            ::_exit(0);
        }
    }
    ::close(start[0]);
    ::close(start[1]);
    EXPECT_EQ(WaitForChild(children[0]), 0);
    EXPECT_EQ(WaitForChild(children[1]), 0);

    RegStore::dropCache();
    std::uint32_t error = 0;
    const auto document = RegStore(HKEY_CURRENT_USER).read(error);
    ASSERT_NE(document, nullptr);
    const auto* key = document->findKey(u"Software\\Race");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->values.size(), 2u * PerProcess);
    for (int c = 0; c < 2; ++c) {
        for (int i = 0; i < PerProcess; ++i) {
            const std::u16string name =
                stdstr::toTString("P" + std::to_string(c) + "-" + std::to_string(i));
            const Value* value = document->findValue(u"Software\\Race", name);
            ASSERT_NE(value, nullptr) << "P" << c << "-" << i;
            EXPECT_EQ(NumberOf(*value), static_cast<std::uint32_t>(i));
        }
    }
}

TEST(RegStore, AReaderNeverSeesAHalfWrittenStore) {
    SandboxRoot root;
    constexpr std::uint32_t Writes = 300;
    const std::u16string key = u"Software\\Consistent";
    ASSERT_EQ(RegStore(HKEY_LOCAL_MACHINE).createKey(key), ERROR_SUCCESS);

    // The writer sets, in each write, "A" and "B" to i and adds "V<i>": a store read whole
    // has A == B and exactly A values V1..VA.
    const pid_t writer = ::fork();
    ASSERT_NE(writer, -1);
    if (writer == 0) {
        RegStore store(HKEY_LOCAL_MACHINE);
        for (std::uint32_t i = 1; i <= Writes; ++i) {
            const std::uint32_t error = store.update([&](RegDocument& document, bool& changed) {
                document.setValue(key, Value::number(u"A", i));
                document.setValue(key, Value::text(u"V" + stdstr::toTString(std::to_string(i)),
                                                   std::u16string(i % 50, u'x')));
                document.setValue(key, Value::number(u"B", i));
                changed = true;
                return ERROR_SUCCESS;
            });
            if (error != ERROR_SUCCESS)
                ::_exit(30);
        }
        ::_exit(0);
    }
    const pid_t reader = ::fork();
    ASSERT_NE(reader, -1);
    if (reader == 0) {
        RegStore store(HKEY_LOCAL_MACHINE);
        std::uint32_t seen = 0;
        std::uint32_t distinct = 0;
        const bool finished = TestSupport::WaitFor(
            [&] {
                std::uint32_t error = 0;
                const auto document = store.read(error);
                if (!document)
                    ::_exit(31);
                const auto* values = document->findKey(key);
                if (!values)
                    ::_exit(32);
                const Value* a = document->findValue(key, u"A");
                const Value* b = document->findValue(key, u"B");
                std::uint32_t count = 0;
                if (a) {
                    if (!b || a->data != b->data)
                        ::_exit(33);
                    count = a->data[0] | (a->data[1] << 8);
                }
                if (values->values.size() != (a ? count + 2 : 0))
                    ::_exit(34);
                for (std::uint32_t i = 1; i <= count; ++i)
                    if (!document->findValue(key, u"V" + stdstr::toTString(std::to_string(i))))
                        ::_exit(35);
                if (count != seen) {
                    seen = count;
                    ++distinct;
                }
                return count == Writes;
            },
            std::chrono::seconds(120));
        ::_exit(!finished ? 36 : distinct < 2 ? 37 : 0);
    }
    EXPECT_EQ(WaitForChild(writer), 0);
    EXPECT_EQ(WaitForChild(reader), 0);
}

} // namespace
