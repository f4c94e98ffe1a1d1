#pragma once
// Installs an EnglishLocalizer for QGEntString before the first test of the program and
// takes it away after the last.

#include "EnglishLocalizer.h"
#include "localisation/QGEntString.h"

#include <gtest/gtest.h>

class EnglishLocalizerEnvironment : public ::testing::Environment {
public:
    void SetUp() override { QGEntString::m_pLocalizer.store(&m_localizer); }
    void TearDown() override { QGEntString::m_pLocalizer.store(nullptr); }

private:
    EnglishLocalizer m_localizer;
};
