#pragma once
// Whether the system can display a language: on Linux a script counts as installed when
// some font that fontconfig knows covers the language.

namespace FontLanguageCoverage {

// `language` is an RFC 3066 tag as fontconfig names languages ("he", "ar", "ja").
bool IsCovered(const char* language);

} // namespace FontLanguageCoverage
