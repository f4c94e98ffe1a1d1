// When the service's executable goes through the elevation prompt.

#include "app/ElevationCheck.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

TEST(ElevationCheck, AnOrdinaryUserOfASystemdMachineIsAskedForElevation) {
    EXPECT_TRUE(ElevationCheck::Applies(false, true, false));
}

TEST(ElevationCheck, RootIsNeverAsked) {
    EXPECT_FALSE(ElevationCheck::Applies(false, true, true));
}

TEST(ElevationCheck, ASandboxRootRunsTheServiceDirectly) {
    EXPECT_FALSE(ElevationCheck::Applies(true, true, false));
    EXPECT_FALSE(ElevationCheck::Applies(true, false, false));
}

TEST(ElevationCheck, AMachineWithoutSystemdHasNoSystemServiceToElevateFor) {
    EXPECT_FALSE(ElevationCheck::Applies(false, false, false));
    EXPECT_FALSE(ElevationCheck::Applies(false, false, true));
}

TEST(ElevationCheck, ThisProcessInASandboxIsNotElevated) {
    TestSupport::SandboxRoot root;
    EXPECT_FALSE(ElevationCheck::Applies());
}
