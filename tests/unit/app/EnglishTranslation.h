#pragma once
// Loads the product's English language file into the translation store and installs the
// program's translator, as start-up does, for tests that compare user texts. Undone at the
// end of the test program.

#include "localisation/CQGTranslationManager.h"
#include "localisation/CTranslator.h"
#include "localisation/QGEntString.h"

#include <gtest/gtest.h>

class EnglishTranslationEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        CQGTranslationManager manager;
        manager.LoadLanguages(stdstr::toTString(QG_SOURCE_DIR "/resources"));
        ASSERT_TRUE(manager.LoadLanguage(u"English", false));
        QGEntString::m_pLocalizer.store(&m_translator);
    }
    void TearDown() override { QGEntString::m_pLocalizer.store(nullptr); }

private:
    CTranslator m_translator;
};

inline ::testing::Environment* const g_englishTranslationEnvironment =
    ::testing::AddGlobalTestEnvironment(new EnglishTranslationEnvironment);
