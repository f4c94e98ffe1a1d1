// CTranslator: the ILocalizer of the program, between QGEntString's buffers and the store.
#include "localisation/CTranslator.h"
#include "LanguageFileText.h"
#include "localisation/QGInternationalizationManager.h"
#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <array>

namespace {

class Translator : public ::testing::Test {
protected:
    void SetUp() override {
        m_root.writeFile("Test.ini", LanguageFileText::Make({"iso-8859-1", "Test", "Test", "Test"},
                                                            {{"Greeting", "Hallo"},
                                                             {"Sentence", "Datei %s fehlt: %s"},
                                                             {"Eight", "12345678"}}));
        CQGInternationalizationManager::Instance().LoadTranslationFile(
            stdstr::toTString(m_root.file("Test.ini")));
    }

    std::int32_t Translate(const std::u16string& key, char16_t* buffer, std::uint32_t size,
                           std::uint32_t* required) {
        return m_translator.TranslateKey(key.c_str(), static_cast<std::uint32_t>(key.size()),
                                         buffer, size, required);
    }

    TestSupport::SandboxRoot m_root;
    CTranslator m_translator;
};

TEST_F(Translator, CopiesTheTranslationWithItsTerminatorAndLeavesRequiredAlone) {
    std::array<char16_t, 16> buffer{};
    buffer.fill(u'#');
    std::uint32_t required = 77;
    EXPECT_EQ(Translate(u"Greeting", buffer.data(), 16, &required), 0);
    EXPECT_EQ(stdstr(buffer.data()), u"Hallo");
    EXPECT_EQ(buffer[5], u'\0');
    EXPECT_EQ(buffer[6], u'#');
    EXPECT_EQ(required, 77u);
}

TEST_F(Translator, ATextAsLongAsTheBufferDoesNotFit) {
    std::array<char16_t, 8> buffer{};
    buffer.fill(u'#');
    std::uint32_t required = 0;
    EXPECT_EQ(Translate(u"Eight", buffer.data(), 8, &required), 1);
    EXPECT_EQ(required, 9u);
    EXPECT_EQ(buffer[0], u'#');
}

TEST_F(Translator, ATextOneShorterThanTheBufferFits) {
    std::array<char16_t, 9> buffer{};
    std::uint32_t required = 0;
    EXPECT_EQ(Translate(u"Eight", buffer.data(), 9, &required), 0);
    EXPECT_EQ(stdstr(buffer.data()), u"12345678");
    EXPECT_EQ(required, 0u);
}

TEST_F(Translator, TakesOnlyKeyLengthCharactersOfTheKey) {
    std::array<char16_t, 16> buffer{};
    std::uint32_t required = 0;
    const std::u16string key = u"GreetingTrailing";
    EXPECT_EQ(m_translator.TranslateKey(key.c_str(), 8, buffer.data(), 16, &required), 0);
    EXPECT_EQ(stdstr(buffer.data()), u"Hallo");
}

TEST_F(Translator, AComposedKeyIsFilledWithItsParameters) {
    std::array<char16_t, 64> buffer{};
    std::uint32_t required = 0;
    EXPECT_EQ(Translate(u"Sentence##a.ini##Keine Berechtigung", buffer.data(), 64, &required), 0);
    EXPECT_EQ(stdstr(buffer.data()), u"Datei a.ini fehlt: Keine Berechtigung");
}

TEST_F(Translator, AnUnknownKeyComesBackAsTheKey) {
    std::array<char16_t, 16> buffer{};
    std::uint32_t required = 0;
    EXPECT_EQ(Translate(u"QGSA_4242", buffer.data(), 16, &required), 0);
    EXPECT_EQ(stdstr(buffer.data()), u"QGSA_4242");
}

TEST_F(Translator, TheReservedSlotsGiveTheirFixedAnswers) {
    EXPECT_EQ(static_cast<std::uint32_t>(m_translator.Reserved1(1, 2, 3, 4, 5)), 0x80004005u);
    EXPECT_EQ(m_translator.Reserved2(), 1u);
    EXPECT_EQ(m_translator.Reserved3(), 1u);
}

} // namespace
