#include "app/DriveTypeTexts.h"

#include "EnglishTranslation.h"

#include <gtest/gtest.h>

namespace {

TEST(DriveTypeTexts, EachTypeHasItsText) {
    EXPECT_EQ(DriveTypeTexts::Of(1), u"Invalid");
    EXPECT_EQ(DriveTypeTexts::Of(2), u"Removable Drive");
    EXPECT_EQ(DriveTypeTexts::Of(3), u"Local Drive");
    EXPECT_EQ(DriveTypeTexts::Of(4), u"Network Drive");
    EXPECT_EQ(DriveTypeTexts::Of(5), u"DVD/CD-RW Drive");
    EXPECT_EQ(DriveTypeTexts::Of(6), u"RAM Disk");
    EXPECT_EQ(DriveTypeTexts::Of(7), u"Floppy Drive");
}

TEST(DriveTypeTexts, AnythingElseIsUnknown) {
    for (int type : {0, 8, 9, -1, 100})
        EXPECT_EQ(DriveTypeTexts::Of(type), u"Unknown") << type;
}

} // namespace
