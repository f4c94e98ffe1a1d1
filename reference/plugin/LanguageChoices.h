#pragma once
// The languages that the Settings page offers: those whose language file lies in the
// QGSaLangs folder beside the program (or beside the plug-in), each under its own name with
// the English one behind it, and the language id that the main window's language change
// (private message 1055) takes. Without such a folder, every language of the language table.

#include <QString>

#include <cstdint>
#include <vector>

struct LanguageChoice {
    std::uint32_t id = 0;
    QString label;
};

class LanguageChoices {
public:
    static std::vector<LanguageChoice> Available();
    // The languages of the files in `folder`; empty when there are none.
    static std::vector<LanguageChoice> FromFolder(const QString& folder);
    // Every language of the table, by its English name.
    static std::vector<LanguageChoice> FromTable();
    // The folder that this library was loaded from; empty when it cannot be told.
    static QString LibraryFolder();
};
