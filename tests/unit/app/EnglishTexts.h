#pragma once
// The user's texts as the English language file gives them: the string table's text without
// its "not translated" marker. Supervision tests look their texts up through this, so that
// boxes can be compared with the sentences a user reads.

#include "StringTable.h"
#include "foundation/stdstr.h"

#include <cstdint>

inline stdstr EnglishText(std::uint32_t id) {
    const char16_t* text = QGResources::FindEnglishString(id);
    stdstr result(text ? text : u"");
    if (!result.empty() && result.front() == u'*')
        result.erase(0, 1);
    return result;
}
