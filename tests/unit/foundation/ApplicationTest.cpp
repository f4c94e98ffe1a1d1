#include "foundation/Application.h"

#include "foundation/CorvaneBaseException.h"
#include "foundation/stdstr.h"

#include <gtest/gtest.h>

#include <climits>
#include <unistd.h>

namespace {

using Corvane::Application;

TEST(Application, ThePathIsThatOfTheRunningProgram) {
    char self[PATH_MAX] = {};
    ASSERT_GT(::readlink("/proc/self/exe", self, sizeof self - 1), 0);
    EXPECT_EQ(Application().fullPath(), stdstr::toTString(self));
}

TEST(Application, TheExeNameFollowsTheLastSlash) {
    EXPECT_EQ(Application().ExeName(), u"ApplicationTest");
    EXPECT_EQ(Application(u"/usr/lib/quillgate/quillgate").ExeName(), u"quillgate");
    EXPECT_EQ(Application(u"/usr/lib/quillgate/").ExeName(), u"");
}

TEST(Application, APathWithoutSlashHasNoExeName) {
    const Application application(u"quillgate");
    try {
        application.ExeName();
        FAIL() << "no exception";
    } catch (const Corvane::BaseException& e) {
        EXPECT_EQ(e.GetMessage(), u"Application::ExeName() - no exe name");
    }
}

TEST(Application, AnEmptyPathIsAFailureToReadIt) {
    try {
        Application application{std::u16string()};
        FAIL() << "no exception";
    } catch (const Corvane::BaseException& e) {
        EXPECT_EQ(e.GetMessage(), u"Application::Application() - GetModuleFileName failed");
    }
}

} // namespace
