#pragma once
// Reading a small text of the system (os-release, the mount table, a sysfs attribute) in
// one piece. Works for the files of /proc and /sys, whose sizes are reported as 0 or as a
// page, by reading to the end rather than trusting the size.

#include <cstddef>
#include <string>

namespace SmallTextFile {

// The file's bytes, at most `maxBytes`; false with errno set when it cannot be opened or
// read. A text longer than `maxBytes` is cut there.
bool read(const std::string& path, std::string& text, std::size_t maxBytes = 1u << 20);

} // namespace SmallTextFile
