#pragma once
// The program's English string table, the resource behind every text id. Texts meant for
// translation keep their leading '*': a language file drops it, so a user only sees the
// marker where a language file lacks the sentence.

#include <cstdint>
#include <span>

// Home page of the deployment; every web link of the table is built under it. A deployment
// may set its own with -DQG_HOME_PAGE="\"https://...\"" (no trailing slash).
#ifndef QG_HOME_PAGE
#define QG_HOME_PAGE "https://quillgate.example.org"
#endif

namespace QGResources {

struct StringEntry {
    std::uint32_t id;
    const char16_t* text;
};

// All entries, sorted by id, each id once.
std::span<const StringEntry> EnglishStringTable();

// The English text of a string id, or nullptr when the table has no such id.
const char16_t* FindEnglishString(std::uint32_t id);

} // namespace QGResources
