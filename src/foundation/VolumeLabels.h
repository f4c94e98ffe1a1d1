#pragma once
// Corvane::VolumeLabels: the labels of the file systems, read from udev's folder of
// symbolic links named after them (/dev/disk/by-label/<label> -> ../../sdb1). udev writes
// characters that are unsafe in a file name as \xNN.

#include <map>
#include <string>
#include <string_view>

namespace Corvane {

class VolumeLabels {
public:
    // Reads the links of `folder` once; a missing folder gives no labels.
    explicit VolumeLabels(const std::string& folder);

    // The label of the device (its path, symbolic links allowed); empty without one.
    std::u16string labelOf(const std::string& device) const;

    // Undoes udev's \xNN escapes.
    static std::string decode(std::string_view name);

private:
    std::map<std::string, std::string> m_labelByDevice;
};

} // namespace Corvane
