#include "localisation/CTranslator.h"

#include "foundation/stdstr.h"
#include "localisation/QGInternationalizationManager.h"

#include <algorithm>

std::int32_t CTranslator::Reserved1(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                                    std::uint32_t) {
    return ReservedFailure;
}

std::uint32_t CTranslator::Reserved2() {
    return 1;
}

std::uint32_t CTranslator::Reserved3() {
    return 1;
}

std::int32_t CTranslator::TranslateKey(const char16_t* key, std::uint32_t keyLength,
                                       char16_t* buffer, std::uint32_t bufferSize,
                                       std::uint32_t* required) {
    const stdstr text = key ? stdstr(key, keyLength) : stdstr();
    stdstr result;
    // The one-text form: the key may carry parameters and several sentences.
    CQGInternationalizationManager::Instance().GetTranslatedString(result, text);

    if (buffer == nullptr || result.size() >= bufferSize) {
        if (required)
            *required = static_cast<std::uint32_t>(result.size() + 1);
        return TranslateBufferTooSmall;
    }
    std::copy(result.begin(), result.end(), buffer);
    buffer[result.size()] = u'\0';
    return TranslateOk;
}
