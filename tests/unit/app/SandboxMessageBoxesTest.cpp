#include "app/SandboxMessageBoxes.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

class SandboxMessageBoxesTest : public ::testing::Test {
protected:
    void TearDown() override { ::unsetenv(SandboxMessageBoxes::LogVariable); }
};

TEST_F(SandboxMessageBoxesTest, ASandboxRootWithARecordFileChoosesThem) {
    TestSupport::SandboxRoot sandbox;
    ::setenv(SandboxMessageBoxes::LogVariable, "/tmp/boxes.txt", 1);
    EXPECT_EQ(SandboxMessageBoxes::ChosenLogPath(), "/tmp/boxes.txt");
}

TEST_F(SandboxMessageBoxesTest, WithoutARecordFileTheRealBoxesStay) {
    TestSupport::SandboxRoot sandbox;
    EXPECT_EQ(SandboxMessageBoxes::ChosenLogPath(), "");
    ::setenv(SandboxMessageBoxes::LogVariable, "", 1);
    EXPECT_EQ(SandboxMessageBoxes::ChosenLogPath(), "");
}

TEST_F(SandboxMessageBoxesTest, WithoutASandboxRootTheRealBoxesStay) {
    TestSupport::SandboxRoot sandbox;
    ::setenv(SandboxMessageBoxes::LogVariable, "/tmp/boxes.txt", 1);
    const std::string saved = sandbox.path();
    ::unsetenv("QUILLGATE_ROOT");
    EXPECT_EQ(SandboxMessageBoxes::ChosenLogPath(), "");
    ::setenv("QUILLGATE_ROOT", saved.c_str(), 1);
}

TEST_F(SandboxMessageBoxesTest, EveryBoxIsRecordedOnItsOwnLine) {
    TestSupport::SandboxRoot sandbox;
    SandboxMessageBoxes boxes(sandbox.file("boxes.txt"));

    EXPECT_EQ(boxes.MessageBox(nullptr, u"First\r\nline", u"Quillgate", 0x10), IMessageBoxes::IDOK);
    EXPECT_EQ(boxes.MessageBox(nullptr, u"Stop?", u"Quillgate", 0x10034), IMessageBoxes::IDNO);
    EXPECT_EQ(boxes.MessageBox(nullptr, u"Go on?", u"", 0x1), IMessageBoxes::IDCANCEL);

    EXPECT_EQ(TestSupport::SandboxRoot::readFile(sandbox.file("boxes.txt")),
              "10|Quillgate|First\\r\\nline\n"
              "10034|Quillgate|Stop?\n"
              "1||Go on?\n");
}

} // namespace
