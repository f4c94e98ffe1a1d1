#include "localisation/FontLanguageCoverage.h"

#include <fontconfig/fontconfig.h>

#include <memory>

namespace FontLanguageCoverage {

bool IsCovered(const char* language) {
    if (!language || !*language || !FcInit())
        return false;
    std::unique_ptr<FcLangSet, decltype(&FcLangSetDestroy)> languages(FcLangSetCreate(),
                                                                      &FcLangSetDestroy);
    std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> pattern(FcPatternCreate(),
                                                                    &FcPatternDestroy);
    std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> objects(
        FcObjectSetBuild(FC_FAMILY, nullptr), &FcObjectSetDestroy);
    if (!languages || !pattern || !objects)
        return false;
    FcLangSetAdd(languages.get(), reinterpret_cast<const FcChar8*>(language));
    FcPatternAddLangSet(pattern.get(), FC_LANG, languages.get());
    // A font matches when its language set contains the one asked for.
    std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> fonts(
        FcFontList(nullptr, pattern.get(), objects.get()), &FcFontSetDestroy);
    return fonts && fonts->nfont > 0;
}

} // namespace FontLanguageCoverage
