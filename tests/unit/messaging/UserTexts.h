#pragma once
// The user's texts of the inbound path as the user reads them, written out here to the
// character (double blanks and spelling included) rather than taken from the table.

#include <string>

namespace UserTexts {

inline constexpr const char* ProductName = "Quillgate";
inline constexpr const char* Reinstalled =
    "An important component of Quillgate has just been reinstalled, please reboot the computer "
    "for changes to take effect.";
inline constexpr const char16_t* ReinstallFailed =
    u"Re-installation of the LSP component of Quillgate has failed. Reinstall Quillgate to fix "
    u"the problem.";
inline constexpr const char16_t* RebootFailed =
    u"Failed to reboot computer, please reboot manully.";
inline constexpr const char* LspError =
    "Failed to start Quillgate because it cannot  load an important component it requires to "
    "run. Reinstall Quillgate to fix the problem.";
// String 238 with its %s filled.
inline std::string CannotLoad(const std::string& component) {
    return "Quillgate cannot start because it cannot load  " + component + ".";
}

} // namespace UserTexts
