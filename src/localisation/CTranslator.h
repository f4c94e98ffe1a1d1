#pragma once
// The ILocalizer that this program installs for QGEntString: it asks the process's
// translation store for the text of a key (a key may be a composed text with "##" and
// "####") and copies the answer into the caller's buffer.

#include "localisation/ILocalizer.h"

#include <cstdint>

class CTranslator : public ILocalizer {
public:
    // E_FAIL: the slot is kept for the layout only.
    static constexpr std::int32_t ReservedFailure = static_cast<std::int32_t>(0x80004005u);

    CTranslator() = default;
    ~CTranslator() override = default;

    // Unused by this program: answers E_FAIL.
    std::int32_t Reserved1(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                           std::uint32_t fourth, std::uint32_t fifth) override;
    // Unused by this program: answer 1.
    std::uint32_t Reserved2() override;
    std::uint32_t Reserved3() override;

    std::int32_t TranslateKey(const char16_t* key, std::uint32_t keyLength, char16_t* buffer,
                              std::uint32_t bufferSize, std::uint32_t* required) override;
};
