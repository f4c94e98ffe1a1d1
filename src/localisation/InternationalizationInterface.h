#pragma once
// The translation store as the rest of the program sees it: load one language file, turn
// keys (and composed key texts with "##" and "####") into sentences, and tell the language's
// "General" fields. The one implementation is CQGInternationalizationManager; callers reach
// it through CQGInternationalizationManager::Instance() and this interface.

#include "foundation/stdstr.h"

#include <vector>

class InternationalizationInterface {
public:
    // Loads a language file and replaces the whole language with it. A file that cannot be
    // opened is traced and leaves the previous language in place; only what an exception
    // inside the load brought is thrown on.
    virtual void LoadTranslationFile(const stdstr& path) = 0;
    // Translates composed text: sentences joined by "####", each a key with its parameters
    // joined by "##". Never fails: a key that is not there comes back in its composed form.
    virtual stdstr& GetTranslatedString(stdstr& out, const stdstr& text) = 0;
    // `parameters` is one text with "##" between the parameters.
    virtual stdstr& GetTranslatedString(stdstr& out, const stdstr& key,
                                        const stdstr& parameters) = 0;
    // The worker of the other two: fills each parameter, in order, into the next "%s".
    virtual stdstr& GetTranslatedString(stdstr& out, const stdstr& key,
                                        const std::vector<stdstr>& parameterVector) = 0;
    // True when a right-to-left script (Hebrew or Arabic) can be displayed.
    virtual bool IsRightToLeftLangSupported() = 0;
    // The fields of section "General" of the language file loaded last.
    virtual stdstr& GetCharset(stdstr& out) = 0;
    virtual stdstr& GetName(stdstr& out) = 0;
    virtual stdstr& GetEnglishName(stdstr& out) = 0;
    virtual stdstr& GetBriskUpdateID(stdstr& out) = 0;
    virtual stdstr& GetWebTransLink(stdstr& out) = 0;

protected:
    // The store lives for the whole process and is never deleted through this interface.
    InternationalizationInterface() = default;
    ~InternationalizationInterface() = default;
    InternationalizationInterface(const InternationalizationInterface&) = delete;
    InternationalizationInterface& operator=(const InternationalizationInterface&) = delete;
};
