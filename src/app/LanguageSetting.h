#pragma once
// The setting "Language" holds a Windows language id as decimal text. The program reads it
// the way the C runtime's _wtoi does (leading blanks, a sign, digits, anything after them
// ignored, 0 when there are none) and goes from the number to the language's name through
// the language table, so that a setting that is not a number selects the default language.

#include "foundation/stdstr.h"

#include <cstdint>

class LanguageSetting {
public:
    // _wtoi: out-of-range values give the nearest 32-bit limit.
    static std::int32_t ToNumber(const stdstr& text);
    // The language name of a language id; "English (US)" for every id not in the table.
    static stdstr NameOfId(std::int32_t id);
    // The language name of the setting's text.
    static stdstr NameOf(const stdstr& setting);
};
