#include "foundation/OperatingSystemVersion.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <sys/utsname.h>

namespace {

TEST(OperatingSystemVersion, ThePrettyNameIsTaken) {
    EXPECT_EQ(
        OperatingSystemVersion::prettyNameOf("NAME=\"Debian GNU/Linux\"\n"
                                             "PRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n"
                                             "VERSION_ID=\"12\"\n"),
        "Debian GNU/Linux 12 (bookworm)");
}

TEST(OperatingSystemVersion, ValuesAreUnquotedAsAShellWould) {
    const std::string text = "A=plain\n"
                             "B=\"double \\\"quoted\\\" \\$HOME \\\\ \\n\"\n"
                             "C='single \"as is\" \\n'\n"
                             "D=bare\\ escaped\n"
                             "  E = \"blanks around\"  \r\n";
    EXPECT_EQ(OperatingSystemVersion::valueOf(text, "A"), "plain");
    EXPECT_EQ(OperatingSystemVersion::valueOf(text, "B"), "double \"quoted\" $HOME \\ \\n");
    EXPECT_EQ(OperatingSystemVersion::valueOf(text, "C"), "single \"as is\" \\n");
    EXPECT_EQ(OperatingSystemVersion::valueOf(text, "D"), "bare escaped");
    EXPECT_EQ(OperatingSystemVersion::valueOf(text, "E"), "blanks around");
    EXPECT_EQ(OperatingSystemVersion::valueOf(text, "F"), std::nullopt);
}

TEST(OperatingSystemVersion, CommentsAreSkippedAndTheLastAssignmentWins) {
    EXPECT_EQ(OperatingSystemVersion::prettyNameOf("# PRETTY_NAME=\"Commented\"\n"
                                                   "PRETTY_NAME=\"First\"\n"
                                                   "PRETTY_NAME=\"Second\"\n"),
              "Second");
}

TEST(OperatingSystemVersion, WithoutAPrettyNameTheNameAndVersionStandIn) {
    EXPECT_EQ(OperatingSystemVersion::prettyNameOf("NAME=Alpine\nVERSION=\"3.19\"\n"),
              "Alpine 3.19");
    EXPECT_EQ(OperatingSystemVersion::prettyNameOf("NAME=Alpine\nPRETTY_NAME=\"\"\n"), "Alpine");
    EXPECT_EQ(OperatingSystemVersion::prettyNameOf("ID=something\n"), "Linux");
    EXPECT_EQ(OperatingSystemVersion::prettyNameOf(""), "");
}

TEST(OperatingSystemVersion, TheFirstReadableFileCounts) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("b", "PRETTY_NAME=B\n");
    sandbox.writeFile("c", "PRETTY_NAME=C\n");
    const OperatingSystemVersion version({sandbox.file("a"), sandbox.file("b"), sandbox.file("c")});
    EXPECT_TRUE(version.wasRead());
    EXPECT_EQ(version.prettyName(), "B");
}

TEST(OperatingSystemVersion, TheKernelPartsAreUnames) {
    TestSupport::SandboxRoot sandbox;
    const OperatingSystemVersion version({sandbox.file("none")});
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    EXPECT_EQ(version.systemName(), names.sysname);
    EXPECT_EQ(version.release(), names.release);
    EXPECT_EQ(version.machine(), names.machine);
    EXPECT_EQ(version.prettyName(), "");
}

TEST(OperatingSystemVersion, TheMachinesOwnFileGivesAName) {
    // Every supported distribution ships os-release in one of the two places.
    const OperatingSystemVersion version;
    EXPECT_FALSE(version.prettyName().empty());
    EXPECT_NE(version.text().find(u", "), std::u16string::npos);
}

} // namespace
