// The envelope's tag search must answer exactly as the standard search does, including for
// characters whose high byte looks like the tag's first character.
#include "messaging/TextSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

constexpr std::size_t npos = std::u16string_view::npos;

void ExpectAsStandard(std::u16string_view text, std::u16string_view pattern) {
    for (std::size_t from = 0; from <= text.size() + 2; ++from)
        ASSERT_EQ(FindText(text, pattern, from), text.find(pattern, from))
            << "from " << from << " in a text of " << text.size();
}

} // namespace

TEST(FindText, FindsATagFromTheGivenPosition) {
    const std::u16string_view text = u"<a><VLE>1</VLE><VLE>2</VLE>";
    EXPECT_EQ(FindText(text, u"<VLE>", 0), 3u);
    EXPECT_EQ(FindText(text, u"<VLE>", 4), 15u);
    EXPECT_EQ(FindText(text, u"<VLE>", 16), npos);
    EXPECT_EQ(FindText(text, u"</VLE>", 0), 9u);
}

TEST(FindText, FindsATagThatEndsTheText) {
    EXPECT_EQ(FindText(u"abc</VLE>", u"</VLE>", 0), 3u);
    EXPECT_EQ(FindText(u"abc</VLE", u"</VLE>", 0), npos);
}

TEST(FindText, IsNotFooledByHighBytesThatLookLikeTheFirstCharacter) {
    // U+3C3C and U+3C00 hold the byte of '<' in their high half; U+013C in the low half.
    const std::u16string text = u"\u3C3C\u3C00\u013C<\u3C56LE><VLE>";
    EXPECT_EQ(FindText(text, u"<VLE>", 0), 8u);
    ExpectAsStandard(text, u"<VLE>");
    ExpectAsStandard(text, u"<");
}

TEST(FindText, AnswersAsTheStandardSearchForEdgePatterns) {
    ExpectAsStandard(u"", u"<VLE>");
    ExpectAsStandard(u"<VLE>", u"");
    ExpectAsStandard(u"<VL", u"<VLE>");
    ExpectAsStandard(u"<<<<VLE>", u"<VLE>");
    ExpectAsStandard(u"\u00E9<\u00E9", u"\u00E9");
    ExpectAsStandard(u"\u65E5\u672C<\u65E5\u672C", u"\u672C<");
}

TEST(FindText, AnswersAsTheStandardSearchOnRandomTexts) {
    // A small alphabet so that partial matches are frequent.
    const std::u16string alphabet = u"<>/VLE\u3C3C\u013C\u3C00a";
    std::mt19937 random(2024);
    for (int round = 0; round < 400; ++round) {
        std::u16string text(random() % 40, u' ');
        for (auto& c : text)
            c = alphabet[random() % alphabet.size()];
        std::u16string pattern(1 + random() % 4, u' ');
        for (auto& c : pattern)
            c = alphabet[random() % alphabet.size()];
        ExpectAsStandard(text, pattern);
        ExpectAsStandard(text, u"</VLE>");
    }
}
