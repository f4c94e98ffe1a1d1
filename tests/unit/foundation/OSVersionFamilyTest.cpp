#include "foundation/OSVersionFamily.h"

#include <gtest/gtest.h>

namespace {

TEST(OSVersionFamily, LinuxIsNotOfTheNtFamily) {
    EXPECT_FALSE(OSVersionFamily().isNTFamily());
}

} // namespace
