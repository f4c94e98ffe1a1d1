// Corvane's string services: composing without a limit or a fallback, and narrowing into a
// code page.
#include "foundation/StringHelper.h"

#include "foundation/CorvaneBaseException.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>
#include <type_traits>

using Corvane::StringHelper;

namespace {

// Sets one environment variable for the life of the object.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        ::setenv(name, value, 1);
    }
    ~ScopedEnv() {
        if (m_old)
            ::setenv(m_name.c_str(), m_old->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

} // namespace

TEST(StringHelper, HasAVirtualDestructor) {
    static_assert(std::has_virtual_destructor_v<StringHelper>);
    EXPECT_TRUE(std::is_polymorphic_v<StringHelper>);
}

TEST(StringHelper, StringFmtComposesWideAndNarrowArguments) {
    EXPECT_EQ(StringHelper::stringFmt(u"CRegistry::Open(0x%x, %s): failed, error (%S)", 0x80000002u,
                                      u"Software\\Velloran", "denied"),
              u"CRegistry::Open(0x80000002, Software\\Velloran): failed, error (denied)");
    EXPECT_EQ(StringHelper::stringFmt(u"%d-%s", -5, std::u16string(u"x")), u"-5-x");
}

TEST(StringHelper, StringFmtWithoutArgumentsCopiesTheFormat) {
    EXPECT_EQ(StringHelper::stringFmt(u"plain 100%%"), u"plain 100%");
}

TEST(StringHelper, StringFmtHasNoLengthLimit) {
    const std::u16string big(40000, u'w');
    const std::u16string composed = StringHelper::stringFmt(u"<%s>", big);
    ASSERT_EQ(composed.size(), 40002u);
    EXPECT_EQ(composed, u"<" + big + u">");
}

TEST(StringHelper, StringFmtOfANullFormatIsEmpty) {
    EXPECT_EQ(StringHelper::stringFmt(nullptr, 1), u"");
}

TEST(StringHelper, StringFmtThrowsForAMissingArgument) {
    try {
        (void)StringHelper::stringFmt(u"value %d and %s", 1);
        FAIL() << "no exception";
    } catch (const Corvane::BaseException& e) {
        EXPECT_EQ(e.GetMessage(),
                  u"StringHelper::stringFmt() - Invalid message format : value %d and %s");
    }
}

TEST(StringHelper, StringFmtThrowsForAnArgumentOfTheWrongKind) {
    EXPECT_THROW((void)StringHelper::stringFmt(u"%d", u"text"), Corvane::BaseException);
    EXPECT_THROW((void)StringHelper::stringFmt(u"%s", 42), Corvane::BaseException);
}

TEST(StringHelper, StringFmtThrowsForAnUnknownConversion) {
    EXPECT_THROW((void)StringHelper::stringFmt(u"%n", 1), Corvane::BaseException);
    EXPECT_THROW((void)StringHelper::stringFmt(u"%y", 1), Corvane::BaseException);
    EXPECT_THROW((void)StringHelper::stringFmt(u"100%"), Corvane::BaseException);
}

TEST(StringHelper, ToNarrowConvertsToUtf8) {
    EXPECT_EQ(StringHelper::toNarrow(u"caf\u00E9 \U0001F600", 65001),
              "caf\xC3\xA9 \xF0\x9F\x98\x80");
}

TEST(StringHelper, ToNarrowConvertsToAWindowsCodePage) {
    EXPECT_EQ(StringHelper::toNarrow(u"caf\u00E9 \u20AC \u0100", 1252), "caf\xE9 \x80 ?");
}

TEST(StringHelper, ToNarrowWithCodePage0UsesTheSystemEncoding) {
    const ScopedEnv locale("LC_ALL", "C.UTF-8");
    EXPECT_EQ(StringHelper::toNarrow(u"\u00E9", 0), "\xC3\xA9");
}

TEST(StringHelper, ToNarrowOfAnEmptyTextIsEmpty) {
    EXPECT_EQ(StringHelper::toNarrow(u"", 1252), "");
}

TEST(StringHelper, ToNarrowThrowsForAnUnknownCodePage) {
    try {
        (void)StringHelper::toNarrow(u"text", 4242);
        FAIL() << "no exception";
    } catch (const Corvane::BaseException& e) {
        EXPECT_EQ(e.GetMessage(), u"WideCharToMultiByte function failed");
        EXPECT_EQ(e.GetCode(), EINVAL);
    }
}
