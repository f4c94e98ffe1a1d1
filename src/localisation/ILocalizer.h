#pragma once
// The translator as QGEntString sees it: one operation that turns a key into text in the
// caller's buffer. The plug-in's build shares this declaration, so the slot order of the
// five virtual operations is part of the contract and must not change.

#include <cstdint>

class ILocalizer {
public:
    // TranslateKey's answers.
    static constexpr std::int32_t TranslateOk = 0;             // the buffer holds the text
    static constexpr std::int32_t TranslateBufferTooSmall = 1; // see `required`

    // Slots 1 to 3 keep the layout that the plug-in's build expects. Nothing in this
    // program calls them; they carry no meaning beyond their fixed answers.
    virtual std::int32_t Reserved1(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                                   std::uint32_t fourth, std::uint32_t fifth) = 0;
    virtual std::uint32_t Reserved2() = 0;
    virtual std::uint32_t Reserved3() = 0;

    // Writes the text of `key` (`keyLength` characters, no terminator needed) with its
    // terminator into `buffer`, which has room for `bufferSize` characters, and answers
    // TranslateOk; `required` is then untouched. When the text does not fit, nothing is
    // written, `*required` becomes the text's length plus 1 and the answer is
    // TranslateBufferTooSmall. Raw pointers on purpose: the plug-in calls through the same
    // table, so the signature stays free of library types.
    virtual std::int32_t TranslateKey(const char16_t* key, std::uint32_t keyLength,
                                      char16_t* buffer, std::uint32_t bufferSize,
                                      std::uint32_t* required) = 0;

    virtual ~ILocalizer() = default;

protected:
    ILocalizer() = default;
    ILocalizer(const ILocalizer&) = default;
    ILocalizer& operator=(const ILocalizer&) = default;
};
