#include "service/ServiceSettings.h"

#include <cerrno>
#include <charconv>
#include <fstream>
#include <string_view>

namespace {

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

bool ReadNumber(std::string_view text, std::uint32_t low, std::uint32_t high, std::uint32_t& out) {
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < low || value > high)
        return false;
    out = value;
    return true;
}

} // namespace

bool ServiceSettings::load(const std::string& path, ServiceSettings& out, std::string& error) {
    out = ServiceSettings();
    std::ifstream file(path);
    if (!file) {
        if (errno == ENOENT)
            return true;
        error = "cannot read " + path;
        return false;
    }
    std::string line;
    int number = 0;
    while (std::getline(file, line)) {
        ++number;
        std::string_view text = Trim(line);
        if (text.empty() || text.front() == '#')
            continue;
        const auto equals = text.find('=');
        const std::string where = path + ":" + std::to_string(number) + ": ";
        if (equals == std::string_view::npos) {
            error = where + "expected Key=Value";
            return false;
        }
        const std::string_view key = Trim(text.substr(0, equals));
        const std::string_view value = Trim(text.substr(equals + 1));
        if (key == "AllowedGroup") {
            out.allowedGroup = std::string(value);
        } else if (key == "MaxConnections") {
            if (!ReadNumber(value, 1, 1024, out.maxConnections)) {
                error = where + "MaxConnections must be a number from 1 to 1024";
                return false;
            }
        } else if (key == "SlowReplyMs") {
            if (!ReadNumber(value, 0, 600000, out.slowReplyMs)) {
                error = where + "SlowReplyMs must be a number from 0 to 600000";
                return false;
            }
        } else {
            error = where + "unknown key '" + std::string(key) + "'";
            return false;
        }
    }
    return true;
}
