#pragma once
// A translator for tests: answers the keys it was given with their texts and every other
// key with the key itself (as the store does for a key it lacks). Installed for the life
// of the object as the process's translator.

#include "localisation/ILocalizer.h"
#include "localisation/QGEntString.h"

#include <algorithm>
#include <map>
#include <string>

class FakeLocalizer : public ILocalizer {
public:
    explicit FakeLocalizer(std::map<std::u16string, std::u16string> texts)
        : m_texts(std::move(texts)) {
        m_previous = QGEntString::m_pLocalizer.exchange(this);
    }
    FakeLocalizer(const FakeLocalizer&) = delete;
    FakeLocalizer& operator=(const FakeLocalizer&) = delete;
    ~FakeLocalizer() override { QGEntString::m_pLocalizer.store(m_previous); }

    std::int32_t Reserved1(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                           std::uint32_t) override {
        return static_cast<std::int32_t>(0x80004005u);
    }
    std::uint32_t Reserved2() override { return 1; }
    std::uint32_t Reserved3() override { return 1; }

    std::int32_t TranslateKey(const char16_t* key, std::uint32_t keyLength, char16_t* buffer,
                              std::uint32_t bufferSize, std::uint32_t* required) override {
        const std::u16string wanted(key, keyLength);
        const auto found = m_texts.find(wanted);
        const std::u16string& text = found == m_texts.end() ? wanted : found->second;
        if (text.size() + 1 > bufferSize) {
            *required = static_cast<std::uint32_t>(text.size() + 1);
            return TranslateBufferTooSmall;
        }
        std::copy(text.begin(), text.end(), buffer);
        buffer[text.size()] = u'\0';
        return TranslateOk;
    }

private:
    std::map<std::u16string, std::u16string> m_texts;
    ILocalizer* m_previous = nullptr;
};
