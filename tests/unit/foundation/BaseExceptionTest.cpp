#include "foundation/BaseException.h"
#include "foundation/ErrorKeys.h"

#include <gtest/gtest.h>

namespace {

TEST(BaseException, ComposesTheKeyAndItsParameters) {
    const BaseException e(u"Registry.cpp", 42, 5, u"stdstr::toTString()",
                          MessageTemplates::KeyWith2Params, ErrorKeys::QGFuncFailed,
                          u"MultiByteToWideChar", u"Windows OS Error: Input/output error");
    EXPECT_EQ(e.GetMessage(),
              u"QGFuncFailed##MultiByteToWideChar##Windows OS Error: Input/output error");
    EXPECT_EQ(e.GetCode(), 5);
    EXPECT_EQ(e.GetLine(), 42);
    EXPECT_EQ(e.GetFile(), u"Registry.cpp");
}

TEST(BaseException, AFormatThatCannotBeComposedNamesFileAndLineAndCanStillBeThrown) {
    try {
        throw BaseException(u"File.cpp", 17, -1, u"FileString::openFile()", u"%d", u"not a number");
    } catch (const BaseException& e) {
        EXPECT_EQ(e.GetMessage(), u"Invalid message format. file = (File.cpp), line = 17");
        EXPECT_EQ(e.GetFullMessage(),
                  u"FileString::openFile() - Invalid message format. file = (File.cpp), line = 17");
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(BaseException, FullMessageWithAFunctionDoesNotMentionFileOrLine) {
    const BaseException e(u"Path.cpp", 99, -1, u"SystemInfo::getAppDataFolder()", u"%s",
                          u"QGMemAlloc");
    EXPECT_EQ(e.GetFullMessage(), u"SystemInfo::getAppDataFolder() - QGMemAlloc");
}

TEST(BaseException, FullMessageWithoutAFunctionNamesFileAndLine) {
    const BaseException e(u"Path.cpp", 99, -1, u"", u"%s", u"QGMemAlloc");
    EXPECT_EQ(e.GetFullMessage(), u"Exception on File = (Path.cpp), line = (99): QGMemAlloc");
}

TEST(BaseException, AddDescriptionAppendsOrPrepends) {
    BaseException e(u"f", 1, -1, u"F", u"%s", u"middle");
    e.AddDescription(false, u" and %d", 2);
    e.AddDescription(true, u"%s: ", u"start");
    EXPECT_EQ(e.GetMessage(), u"start: middle and 2");
}

TEST(BaseException, AddDescriptionFailuresKeepTheMessage) {
    BaseException e(u"f", 1, -1, u"F", u"%s", u"text");
    e.AddDescription(true, u"%d", u"bad");
    EXPECT_EQ(e.GetMessage(), u"Invalid message formattext");
    e.AddDescription(false, u"%d", u"bad");
    EXPECT_EQ(e.GetMessage(),
              u"Invalid message formattext, Invalid message format description was added");
}

TEST(BaseException, AddFunctionAppendsOrPrepends) {
    BaseException e(u"f", 1, -1, u"Inner()", u"%s", u"m");
    e.AddFunction(true, u"%s <- ", u"Outer()");
    e.AddFunction(false, u" [%d]", 3);
    EXPECT_EQ(e.GetFullMessage(), u"Outer() <- Inner() [3] - m");
}

TEST(BaseException, AddFunctionFailures) {
    BaseException e(u"f", 1, -1, u"Inner()", u"%s", u"m");
    e.AddFunction(true, u"%d", u"bad");
    EXPECT_EQ(e.GetFullMessage(), u"Invalid message formatInner() - m");
    e.AddFunction(false, u"%d%s", u"bad");
    EXPECT_EQ(e.GetFullMessage(),
              u"BaseException::AddFunction() - Invalid message format. (%d%s) - m");
}

TEST(BaseException, CopiesCarryAllFields) {
    const BaseException e(u"a.cpp", 3, 7, u"A::b()", u"%s##%s", u"QGReadFile", u"x");
    const BaseException copy = e;
    EXPECT_EQ(copy.GetMessage(), e.GetMessage());
    EXPECT_EQ(copy.GetFullMessage(), u"A::b() - QGReadFile##x");
    EXPECT_EQ(copy.GetCode(), 7);
}

TEST(ErrorKeys, TheTemplatesJoinTwoToSevenParameters) {
    EXPECT_EQ(
        stringFmt(MessageTemplates::KeyWith7Params, u"K", u"1", u"2", u"3", u"4", u"5", u"6", u"7"),
        u"K##1##2##3##4##5##6##7");
    EXPECT_EQ(stringFmt(MessageTemplates::KeyWith2Params, u"K", u"1", u"2"), u"K##1##2");
    EXPECT_EQ(stringFmt(MessageTemplates::KeyWith2Params, ErrorKeys::QGOpenFile, u"/p", u"e"),
              u"QGOpenFile##/p##e");
}

TEST(ErrorKeys, EveryKeyIsItsOwnName) {
    EXPECT_EQ(ErrorKeys::ExctractProcInfo, u"ExctractProcInfo");
    EXPECT_EQ(ErrorKeys::QGFailedSignIni, u"QGFailedSignIni");
    EXPECT_EQ(ErrorKeys::QGFileDoesNotExist, u"QGFileDoesNotExist");
    EXPECT_EQ(ErrorKeys::QueryTokenMembership, u"QueryTokenMembership");
}

TEST(GetOSErrorText, KnownErrorsAreIntroduced) {
    EXPECT_EQ(GetOSErrorText(ENOENT), u"Windows OS Error: No such file or directory");
}

TEST(GetOSErrorText, ACodeWithoutSystemTextYieldsTheBareNumber) {
    EXPECT_EQ(GetOSErrorText(123456), u"123456");
    EXPECT_EQ(ComposeOSErrorText(-5, nullptr), u"-5");
}

TEST(GetOSErrorText, ATextEndingInALineEndYieldsOneLineWithoutIt) {
    EXPECT_EQ(ComposeOSErrorText(5, "Access is denied.\r\n"),
              u"Windows OS Error: Access is denied.");
    // The first carriage return and line feed decides; a lone line feed only without one.
    EXPECT_EQ(ComposeOSErrorText(5, "First line\nsecond\r\n"),
              u"Windows OS Error: First line\nsecond");
    EXPECT_EQ(ComposeOSErrorText(5, "First line\nsecond"), u"Windows OS Error: First line");
    EXPECT_EQ(ComposeOSErrorText(5, "A\r\nB\nC"), u"Windows OS Error: A");
}

} // namespace
