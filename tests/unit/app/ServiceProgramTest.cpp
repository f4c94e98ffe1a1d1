// Where the service's executable is found.

#include "app/ServiceProgram.h"

#include "foundation/SystemPaths.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class ServiceProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        const char* value = std::getenv(ServiceProgram::OverrideVariable);
        if (value)
            m_saved = value;
        ::unsetenv(ServiceProgram::OverrideVariable);
    }
    void TearDown() override {
        if (m_saved)
            ::setenv(ServiceProgram::OverrideVariable, m_saved->c_str(), 1);
        else
            ::unsetenv(ServiceProgram::OverrideVariable);
    }

private:
    std::optional<std::string> m_saved;
};

} // namespace

TEST_F(ServiceProgramTest, TheExecutableLiesBesideTheRunningProgram) {
    const std::optional<stdstr> path = ServiceProgram::Path();
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, stdstr::toTString(SystemPaths::ProgramFolder()) + u"/qgsasvc");
}

TEST_F(ServiceProgramTest, TheEnvironmentNamesAnotherExecutable) {
    ::setenv(ServiceProgram::OverrideVariable, "/opt/test/qgsasvc-stand-in", 1);
    EXPECT_EQ(ServiceProgram::Path(), stdstr(u"/opt/test/qgsasvc-stand-in"));
}

TEST_F(ServiceProgramTest, AnEmptyOverrideIsNoOverride) {
    ::setenv(ServiceProgram::OverrideVariable, "", 1);
    EXPECT_EQ(ServiceProgram::Path(),
              stdstr::toTString(SystemPaths::ProgramFolder()) + u"/qgsasvc");
}

TEST_F(ServiceProgramTest, TheFolderIsWhatStandsBeforeTheLastSlash) {
    EXPECT_EQ(ServiceProgram::BesideProgram(u"/usr/lib/quillgate/quillgate"),
              u"/usr/lib/quillgate/qgsasvc");
    EXPECT_EQ(ServiceProgram::BesideProgram(u"/quillgate"), u"/qgsasvc");
}

TEST_F(ServiceProgramTest, APathWithoutASlashIsTakenWhole) {
    EXPECT_EQ(ServiceProgram::BesideProgram(u"quillgate"), u"quillgate/qgsasvc");
}
