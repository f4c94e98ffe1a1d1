#pragma once
// The answers to the plug-in's set request (message 1051, SetInfoValue) and get request
// (message 1052, GetInfoValue): a code in wParam, a value in lParam. Texts travel as
// pointers to terminated UTF-16 text, both ways. The main window owns one object, which
// keeps the version text of the first code 1 request for the rest of its life.

#include "foundation/stdstr.h"

#include <cstdint>
#include <optional>

class IInfoValueHost;

class InfoValues {
public:
    using Result = std::intptr_t;
    using Value = std::intptr_t;

    // The longest texts that codes 259 and 260 take over.
    static constexpr std::size_t ConfigPathLimit = 260;
    static constexpr std::size_t LanguageLimit = 128;
    // The section button that code 8 clicks: Address List.
    static constexpr int AddressListButton = 1001;

    explicit InfoValues(IInfoValueHost& host);

    Result SetInfoValue(std::int32_t code, Value value);
    Result GetInfoValue(std::int32_t code, Value value);

private:
    IInfoValueHost& m_host;
    // Worked out at the first code 1 request; every later one gets it, whatever file it
    // names.
    std::optional<stdstr> m_version;
};
