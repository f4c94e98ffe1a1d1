#pragma once
// QGConfig.ini, which the service owns and the program only reads. The service writes the
// eight "SYSTEM" keys at each Config change; every other line of the file (other sections,
// other keys, comments) is kept as it was. A write goes to a temporary file in the same
// folder, which is flushed to the disk and renamed over the old one, and the folder is
// flushed too: a reader sees the old file or the new one, never a mixture, even across a
// crash.
//
// The text is UTF-8 with "\n" line ends, one "Key=Value" per line without blanks around the
// '=' (the program's INI reader counts blanks as part of keys and values). A text value that
// begins or ends with a blank, or begins and ends with a double quote, is written between
// double quotes, which the reader strips; a line break in a value ends the value there.

#include "service/SystemSettings.h"

#include <string>
#include <vector>

class ConfigStore {
public:
    explicit ConfigStore(std::string path);

    // Reads the file; missing keys, or a missing file, give the defaults.
    void load();
    const SystemSettings& settings() const { return m_settings; }
    const std::string& path() const { return m_path; }

    // Writes `settings` and keeps them; false with `error` set, the file then unchanged.
    bool store(const SystemSettings& settings, std::string& error);

    // The text of the file with the "SYSTEM" keys of `settings`, from the file's `current`
    // text (empty for a new file).
    static std::string compose(const std::string& current, const SystemSettings& settings);
    static SystemSettings parse(const std::string& text);

private:
    std::string m_path;
    SystemSettings m_settings;
};
