#include "foundation/VolumeLabels.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Corvane::VolumeLabels;

TEST(VolumeLabels, UdevsHexEscapesAreUndone) {
    EXPECT_EQ(VolumeLabels::decode("My\\x20Data"), "My Data");
    EXPECT_EQ(VolumeLabels::decode("a\\x2fb"), "a/b");
    EXPECT_EQ(VolumeLabels::decode("keep\\xZZ\\x2"), "keep\\xZZ\\x2");
}

TEST(VolumeLabels, ALabelIsFoundThroughItsLinkAndAnyLinkToTheDevice) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("dev/sdx1", "");
    sandbox.writeFile("dev/sdx2", "");
    std::filesystem::create_directories(sandbox.file("dev/disk/by-label"));
    std::filesystem::create_directories(sandbox.file("dev/mapper"));
    std::filesystem::create_symlink("../../sdx1", sandbox.file("dev/disk/by-label/My\\x20Data"));
    std::filesystem::create_symlink("../sdx1", sandbox.file("dev/mapper/data"));
    const VolumeLabels labels(sandbox.file("dev/disk/by-label"));
    EXPECT_EQ(labels.labelOf(sandbox.file("dev/sdx1")), u"My Data");
    EXPECT_EQ(labels.labelOf(sandbox.file("dev/mapper/data")), u"My Data");
    EXPECT_EQ(labels.labelOf(sandbox.file("dev/sdx2")), u"");
    EXPECT_EQ(labels.labelOf("tmpfs"), u"");
}

TEST(VolumeLabels, AMissingFolderHasNoLabels) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("dev/sdx1", "");
    EXPECT_EQ(VolumeLabels(sandbox.file("dev/disk/by-label")).labelOf(sandbox.file("dev/sdx1")),
              u"");
}

} // namespace
