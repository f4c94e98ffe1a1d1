// quillgate-update, the updater stand-in: the record of its command line and its exit code.
#include "ProgramRun.h"
#include "support/SandboxRoot.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

class UpdaterSandbox : public ::testing::Test {
protected:
    void SetUp() override {
        ::unsetenv("QUILLGATE_UPDATE_RECORD");
        ::unsetenv("QUILLGATE_UPDATE_EXIT");
    }
    void TearDown() override {
        ::unsetenv("QUILLGATE_UPDATE_RECORD");
        ::unsetenv("QUILLGATE_UPDATE_EXIT");
    }
    static TestSupport::ProgramResult Update(const std::vector<std::string>& arguments) {
        return TestSupport::RunProgram(QUILLGATE_UPDATE_PATH, arguments);
    }
    std::string record() const {
        return TestSupport::SandboxRoot::readFile(
            sandbox.file("var/lib/velloran/quillgate/update-calls.txt"));
    }

    TestSupport::SandboxRoot sandbox;
};

} // namespace

using UpdaterRecord = UpdaterSandbox;
using UpdaterExitCode = UpdaterSandbox;

TEST_F(UpdaterRecord, AppendsOneLineWithEachArgumentInBrackets) {
    const auto first =
        Update({"-product=QG", "-mainexe=Quillgate.exe", "-version=4.0.0.1", "-code=", "-silent"});
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.err, "");
    const auto second = Update({"/SCHEDULED", "/product=QG", "/LANG=1033"});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(record(), "[-product=QG] [-mainexe=Quillgate.exe] [-version=4.0.0.1] [-code=] "
                        "[-silent]\n[/SCHEDULED] [/product=QG] [/LANG=1033]\n");
}

TEST_F(UpdaterRecord, EscapesWhatWouldMakeTheLineAmbiguous) {
    ASSERT_EQ(Update({"a b", "x]y", "back\\slash", "two\nlines", "", "\xC3\xA9"}).exitCode, 0);
    EXPECT_EQ(record(), "[a b] [x\\]y] [back\\\\slash] [two\\nlines] [] [\xC3\xA9]\n");
}

TEST_F(UpdaterRecord, RecordsACallWithoutArgumentsAsAnEmptyLine) {
    ASSERT_EQ(Update({}).exitCode, 0);
    EXPECT_EQ(record(), "\n");
}

TEST_F(UpdaterRecord, GoesToTheFileNamedInTheEnvironment) {
    const std::string file = sandbox.file("elsewhere/calls.log");
    ::setenv("QUILLGATE_UPDATE_RECORD", file.c_str(), 1);
    ASSERT_EQ(Update({"-silent"}).exitCode, 0);
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(file), "[-silent]\n");
    EXPECT_EQ(record(), "");
}

TEST_F(UpdaterExitCode, IsTheOneChosenInTheEnvironment) {
    for (const char* code : {"0", "3", "126", "255"}) {
        ::setenv("QUILLGATE_UPDATE_EXIT", code, 1);
        EXPECT_EQ(Update({"-silent"}).exitCode, std::atoi(code));
    }
}

TEST_F(UpdaterExitCode, ThatIsNotACodeIsReportedAndGivesOne) {
    ::setenv("QUILLGATE_UPDATE_EXIT", "-1", 1);
    const auto result = Update({"-silent"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "quillgate-update: QUILLGATE_UPDATE_EXIT=-1 is not 0..255\n");
    EXPECT_EQ(record(), "[-silent]\n");
}
