#include "app/CommandLineScan.h"

#include <gtest/gtest.h>

namespace {

using Request = CommandLineScan::Request;

TEST(CommandLineScan, AnEmptyLineIsANormalStart) {
    EXPECT_EQ(CommandLineScan::Scan(u""), Request::NormalStart);
}

TEST(CommandLineScan, PlainSilentWordIsASilentStart) {
    EXPECT_EQ(CommandLineScan::Scan(u"-s"), Request::SilentStart);
}

TEST(CommandLineScan, SilentWordInsideALongerWordIsASilentStart) {
    EXPECT_EQ(CommandLineScan::Scan(u"--start-silently"), Request::SilentStart);
    EXPECT_EQ(CommandLineScan::Scan(u"x-sy"), Request::SilentStart);
}

TEST(CommandLineScan, HyphenAndSInsideAPathIsASilentStart) {
    EXPECT_EQ(CommandLineScan::Scan(u"/home/ann/my-stuff/notes.txt"), Request::SilentStart);
}

TEST(CommandLineScan, UpperCaseSAfterTheHyphenIsNoSilentStart) {
    EXPECT_EQ(CommandLineScan::Scan(u"-S"), Request::NormalStart);
}

TEST(CommandLineScan, SilentAndKillTogetherIsASilentStartWithoutKill) {
    EXPECT_EQ(CommandLineScan::Scan(u"-u -s"), Request::SilentStart);
    EXPECT_EQ(CommandLineScan::Scan(u"-s -u"), Request::SilentStart);
    EXPECT_EQ(CommandLineScan::Scan(u"/U -s"), Request::SilentStart);
}

TEST(CommandLineScan, EachKillWordEndsAllCopies) {
    for (const char16_t* word : {u"/U", u"/u", u"-U", u"-u"})
        EXPECT_EQ(CommandLineScan::Scan(word), Request::KillAll) << stdstr::fromTString(word);
}

TEST(CommandLineScan, AnyWordBeginningWithHyphenLowerUEndsAllCopies) {
    EXPECT_EQ(CommandLineScan::Scan(u"-update"), Request::KillAll);
    EXPECT_EQ(CommandLineScan::Scan(u"-uninstall now"), Request::KillAll);
}

TEST(CommandLineScan, KillWordInsideAPathEndsAllCopies) {
    EXPECT_EQ(CommandLineScan::Scan(u"/usr/local/x"), Request::KillAll);
}

TEST(CommandLineScan, SlashSMeansNothing) {
    EXPECT_EQ(CommandLineScan::Scan(u"/s"), Request::NormalStart);
    EXPECT_EQ(CommandLineScan::Scan(u"/S"), Request::NormalStart);
}

TEST(CommandLineScan, OtherWordsAreANormalStart) {
    EXPECT_EQ(CommandLineScan::Scan(u"hello world"), Request::NormalStart);
    EXPECT_EQ(CommandLineScan::Scan(u"-x -y"), Request::NormalStart);
}

TEST(CommandLineScan, TheProgramsOwnOptionsHoldNoCommandWord) {
    EXPECT_EQ(CommandLineScan::Scan(u"--help"), Request::NormalStart);
    EXPECT_EQ(CommandLineScan::Scan(u"--version"), Request::NormalStart);
}

TEST(CommandLineScan, JoinPutsOneBlankBetweenTheArguments) {
    const char* argv[] = {"quillgate", "-x", "two words", "é", nullptr};
    EXPECT_EQ(CommandLineScan::Join(4, argv), u"-x two words é");
}

TEST(CommandLineScan, JoinLeavesTheProgramNameOut) {
    const char* argv[] = {"quillgate", nullptr};
    EXPECT_EQ(CommandLineScan::Join(1, argv), u"");
}

TEST(CommandLineScan, AWordInALaterArgumentIsFound) {
    const char* argv[] = {"quillgate", "--foo", "-u", nullptr};
    EXPECT_EQ(CommandLineScan::Scan(CommandLineScan::Join(3, argv)), Request::KillAll);
}

} // namespace
