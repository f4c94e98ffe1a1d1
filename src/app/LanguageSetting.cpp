#include "app/LanguageSetting.h"

#include "localisation/LanguageTable.h"
#include "mainwindow/InitPluginPages.h"

std::int32_t LanguageSetting::ToNumber(const stdstr& text) {
    // One reading of a language setting for the whole program: the page set-up reads it too.
    return LanguageIdFromSetting(text);
}

stdstr LanguageSetting::NameOfId(std::int32_t id) {
    // A negative id is no language; as an unsigned number it is not in the table either.
    return LanguageTable::NameFromId(static_cast<std::uint32_t>(id));
}

stdstr LanguageSetting::NameOf(const stdstr& setting) {
    return NameOfId(ToNumber(setting));
}
