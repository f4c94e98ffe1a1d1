// A label's style as text flags.

#include "toolkit/LabelTextFlags.h"

#include <gtest/gtest.h>

using F = LabelTextFlags;

TEST(LabelTextFlags, TheStyleTypeGivesAlignmentAndWordBreak) {
    EXPECT_EQ(F::FromStyle(F::SS_CENTER, QStringLiteral("x")), F::DT_CENTER | F::DT_WORDBREAK);
    EXPECT_EQ(F::FromStyle(F::SS_RIGHT, QStringLiteral("x")), F::DT_RIGHT | F::DT_WORDBREAK);
    EXPECT_EQ(F::FromStyle(F::SS_LEFTNOWORDWRAP, QStringLiteral("x")), 0u);
    EXPECT_EQ(F::FromStyle(F::SS_LEFT, QStringLiteral("x")), F::DT_WORDBREAK);
    EXPECT_EQ(F::FromStyle(0xB, QStringLiteral("x")), F::DT_WORDBREAK);
    // Other bits do not change the type.
    EXPECT_EQ(F::FromStyle(F::SS_RIGHT | F::SS_NOTIFY, QStringLiteral("x")),
              F::DT_RIGHT | F::DT_WORDBREAK);
}

TEST(LabelTextFlags, CenterImageCentresOneLineBothWays) {
    EXPECT_EQ(F::FromStyle(F::SS_CENTERIMAGE, QStringLiteral("one line")),
              F::DT_CENTER | F::DT_VCENTER | F::DT_SINGLELINE);
    EXPECT_EQ(F::FromStyle(F::SS_RIGHT | F::SS_CENTERIMAGE, QStringLiteral("one line")),
              F::DT_CENTER | F::DT_VCENTER | F::DT_SINGLELINE);
}

TEST(LabelTextFlags, ATextWithCrLfAndCenterImageIsNotVerticallyCentred) {
    const auto flags = F::FromStyle(F::SS_CENTERIMAGE, QStringLiteral("two\r\nlines"));
    EXPECT_EQ(flags, F::DT_CENTER);
    EXPECT_TRUE(F::ToQt(flags) & Qt::AlignTop);
    EXPECT_FALSE(F::ToQt(flags) & Qt::AlignVCenter);
    // A bare line feed is not looked for.
    EXPECT_EQ(F::FromStyle(F::SS_CENTERIMAGE, QStringLiteral("two\nlines")),
              F::DT_CENTER | F::DT_VCENTER | F::DT_SINGLELINE);
}

TEST(LabelTextFlags, QtFlagsFollowTheTextFlags) {
    EXPECT_EQ(F::ToQt(F::DT_CENTER | F::DT_WORDBREAK),
              Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap);
    EXPECT_EQ(F::ToQt(F::DT_RIGHT | F::DT_WORDBREAK),
              Qt::AlignRight | Qt::AlignTop | Qt::TextWordWrap);
    EXPECT_EQ(F::ToQt(0), Qt::AlignLeft | Qt::AlignTop);
    EXPECT_EQ(F::ToQt(F::DT_CENTER | F::DT_VCENTER | F::DT_SINGLELINE),
              Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine);
    // Vertical centring without a single line has no effect.
    EXPECT_EQ(F::ToQt(F::DT_VCENTER), Qt::AlignLeft | Qt::AlignTop);
}
