#pragma once
// A localizer that answers the program's string keys ("QGSA_<id>") with the English table's
// text without its '*' marker, as the English language file does, so that the user's texts
// come out as the user reads them.

#include "StringTable.h"
#include "foundation/stdstr.h"
#include "localisation/ILocalizer.h"
#include "localisation/QGEntString.h"

#include <cstdlib>
#include <string>

class EnglishLocalizer : public ILocalizer {
public:
    std::int32_t Reserved1(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                           std::uint32_t) override {
        return 0;
    }
    std::uint32_t Reserved2() override { return 1; }
    std::uint32_t Reserved3() override { return 1; }

    std::int32_t TranslateKey(const char16_t* key, std::uint32_t keyLength, char16_t* buffer,
                              std::uint32_t bufferSize, std::uint32_t* required) override {
        std::u16string text(key, keyLength);
        const std::u16string prefix = u"QGSA_";
        if (text.compare(0, prefix.size(), prefix) == 0) {
            const std::string number = stdstr::fromTString(text.substr(prefix.size()));
            const char16_t* english = QGResources::FindEnglishString(
                static_cast<std::uint32_t>(std::atoi(number.c_str())));
            if (english != nullptr) {
                text = english;
                if (!text.empty() && text.front() == u'*')
                    text.erase(0, 1);
            }
        }
        // Unknown keys come back as themselves, as the translation store answers them.
        if (text.size() + 1 > bufferSize) {
            *required = static_cast<std::uint32_t>(text.size() + 1);
            return TranslateBufferTooSmall;
        }
        text.copy(buffer, text.size());
        buffer[text.size()] = u'\0';
        return TranslateOk;
    }
};
