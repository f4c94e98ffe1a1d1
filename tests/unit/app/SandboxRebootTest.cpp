#include "app/SandboxReboot.h"
#include "foundation/stdstr.h"

#include "support/SandboxRoot.h"
#include "support/TraceRecorder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

TEST(SandboxReboot, ARestartIsRecordedUnderTheRootInsteadOfCarriedOut) {
    TestSupport::SandboxRoot sandbox;
    TraceRecorder::Instance().Clear();
    SandboxReboot reboot;

    EXPECT_TRUE(reboot.RebootComputer());
    EXPECT_TRUE(reboot.RebootComputer());

    const std::string path = sandbox.file("var/log/velloran/quillgate-reboot.txt");
    EXPECT_EQ(SandboxReboot::RecordPath(), path);
    const std::string line = "reboot requested by " + std::to_string(::getpid()) + "\n";
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(path), line + line);
    EXPECT_EQ(TraceRecorder::Instance().Count(
                  TRACE_INFO, u"SandboxReboot::RebootComputer - recorded, not carried out (" +
                                  stdstr::toTString(path) + u")"),
              2u);
}

TEST(SandboxReboot, ARecordThatCannotBeWrittenIsAFailedRestart) {
    TestSupport::SandboxRoot sandbox;
    // A file where the record's folder should be.
    sandbox.writeFile("var/log", "not a folder");
    TraceRecorder::Instance().Clear();

    EXPECT_FALSE(SandboxReboot().RebootComputer());
    EXPECT_EQ(TraceRecorder::Instance()
                  .StartingWith(TRACE_INFO, u"SandboxReboot::RebootComputer - could not be "
                                            u"recorded")
                  .size(),
              1u);
}

} // namespace
