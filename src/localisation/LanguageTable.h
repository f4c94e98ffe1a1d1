#pragma once
// The languages the product knows, by Windows language id, English name and the short
// code of its web pages and updates. Ids and names are those the plug-in and the setting
// "Language" speak; whatever is not in the table stands for US English.

#include "foundation/stdstr.h"

#include <cstdint>
#include <span>

class LanguageTable {
public:
    struct Entry {
        std::uint32_t id;
        const char16_t* name;
        const char16_t* code;
    };

    static constexpr std::uint32_t DefaultId = 1033;
    static constexpr const char16_t* DefaultName = u"English (US)";
    static constexpr const char16_t* DefaultCode = u"en";

    static std::span<const Entry> Entries();

    // "English (US)" for an id that is not in the table.
    static stdstr NameFromId(std::uint32_t id);
    // "en" for an id that is not in the table.
    static stdstr CodeFromId(std::uint32_t id);
    // By the exact name; "en" and 1033 for a name that is not in the table.
    static stdstr CodeFromName(const stdstr& name);
    static std::uint32_t IdFromName(const stdstr& name);

private:
    static const Entry* FindId(std::uint32_t id);
    static const Entry* FindName(const stdstr& name);
};
