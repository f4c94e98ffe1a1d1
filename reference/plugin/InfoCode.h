#pragma once
// The codes of the host's set request (private message 1051) and get request (1052) that the
// pages use; the value travels in lParam, texts as pointers to terminated UTF-16 text.

namespace InfoCode {

// Get: the setting FilterOn.
inline constexpr int FilterOn = 5;
// Set: 1 asks the user and turns filtering off, any other value turns it on; answers
// whether it was done.
inline constexpr int FilterState = 7;
// Set: acts as a click on the main window's Address List button.
inline constexpr int ShowAddressList = 8;
// Set and get: the settings.
inline constexpr int AutoUpgrade = 256;
inline constexpr int UpgradePeriod = 257;
inline constexpr int HistoryDays = 258;
inline constexpr int ConfigPath = 259;
inline constexpr int Language = 260;
// Set: sends the whole settings to the service.
inline constexpr int NotifyService = 261;

} // namespace InfoCode
