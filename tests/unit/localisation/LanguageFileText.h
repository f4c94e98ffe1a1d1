#pragma once
// Language files for the localisation tests, in the layout of the shipped ones: UTF-8,
// "\r\n" line ends, a "General" section and a "QGSection".

#include <string>
#include <utility>
#include <vector>

namespace LanguageFileText {

struct General {
    std::string charset;
    std::string name;
    std::string englishName;
    std::string briskUpdateID;
    std::string webTransLink = "https://quillgate.example.org/";
};

// Fields left empty are not written at all.
inline std::string Make(const General& general,
                        const std::vector<std::pair<std::string, std::string>>& entries = {}) {
    std::string text = "[General]\r\n";
    const std::pair<const char*, const std::string*> fields[] = {
        {"Charset", &general.charset},           {"Name", &general.name},
        {"EnglishName", &general.englishName},   {"BriskUpdateID", &general.briskUpdateID},
        {"WebTransLink", &general.webTransLink},
    };
    for (const auto& [key, value] : fields) {
        if (!value->empty())
            text += std::string(key) + "=" + *value + "\r\n";
    }
    text += "\r\n[QGSection]\r\n";
    for (const auto& [key, value] : entries)
        text += key + "=" + value + "\r\n";
    return text;
}

} // namespace LanguageFileText
