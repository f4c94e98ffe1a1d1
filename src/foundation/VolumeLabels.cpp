#include "foundation/VolumeLabels.h"

#include "foundation/stdstr.h"

#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <memory>

namespace Corvane {
namespace {

struct DirCloser {
    void operator()(DIR* dir) const { ::closedir(dir); }
};

std::string RealPath(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) ? std::string(resolved) : std::string();
}

int HexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

VolumeLabels::VolumeLabels(const std::string& folder) {
    const std::unique_ptr<DIR, DirCloser> dir(::opendir(folder.c_str()));
    if (!dir)
        return;
    while (const dirent* entry = ::readdir(dir.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        const std::string device = RealPath(folder + "/" + name);
        if (!device.empty())
            m_labelByDevice.emplace(device, decode(name));
    }
}

std::u16string VolumeLabels::labelOf(const std::string& device) const {
    const std::string resolved = RealPath(device);
    if (resolved.empty())
        return {};
    const auto found = m_labelByDevice.find(resolved);
    return found == m_labelByDevice.end() ? std::u16string() : stdstr::toTString(found->second);
}

std::string VolumeLabels::decode(std::string_view name) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '\\' && i + 3 < name.size() && name[i + 1] == 'x') {
            const int high = HexValue(name[i + 2]);
            const int low = HexValue(name[i + 3]);
            if (high >= 0 && low >= 0) {
                result += static_cast<char>(high * 16 + low);
                i += 3;
                continue;
            }
        }
        result += name[i];
    }
    return result;
}

} // namespace Corvane
