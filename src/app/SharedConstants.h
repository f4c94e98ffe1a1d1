#pragma once
// The vocabulary that this program shares with the filter service and the plug-in: one
// constant string object per name, made at static initialisation and destroyed at exit. Most
// of them are read by the service or the plug-in only; they are kept here so that every part
// of the system spells them alike. Each group says whether this program reads it.
//
// Three more groups of the same vocabulary live beside the code that reads them: the
// language names and short codes (localisation/LanguageTable.h), the envelope's fixed texts
// (messaging/EnvelopeTexts.h) and the error keys with their "##" formats
// (foundation/ErrorKeys.h).
//
// Registry key paths keep their backslashes: the machine and user stores name keys that way.
// Names of programs follow the Linux names of the installed files.

#include "foundation/stdstr.h"

#include <string>

namespace SharedConstants {

// Registry roots. The last one is read by the update check; the second is read through
// QuillgateRegistryKey below, which has the same text.
inline const stdstr VelloranRoot = u"Software\\Velloran";
inline const stdstr QuillgateRoot = u"Software\\Velloran\\Quillgate";
inline const stdstr QuillgateVersionRoot = u"Software\\Velloran\\Quillgate\\4.0";
inline const stdstr QuillgateSettingsRoot = u"Software\\Velloran\\Quillgate\\4.0\\Settings";

// The key of the machine store's "iLang" value, which LoadSettings reads.
inline const stdstr QuillgateRegistryKey = u"Software\\Velloran\\Quillgate";
inline const stdstr LanguageIdValue = u"iLang";

// Filter tuning values (the service's; "Threashold" is spelled as the service spells it).
inline const stdstr BayesProbThreshold = u"BayesProbThreashold";
inline const stdstr BayesMaxWordCount = u"BayesMaxWordCount";
inline const stdstr TrainedSpamThreshold = u"TrainedSpamThreshold";
inline const stdstr TrainedCleanThreshold = u"TrainedCleanThreshold";
inline const stdstr TrainedSpamCount = u"TrainedSpamCount";
inline const stdstr TrainedCleanCount = u"TrainedCleanCount";

// Language values. Not read here: language selection keeps its own copies.
inline const stdstr LanguageValue = u"Language";
inline const stdstr EnglishLanguage = u"English";

// Update stamps. The first is read by the update check.
inline const stdstr LastUpdate = u"LastUpdate";
inline const stdstr LastDNSBLUpdate = u"LastDNSBLUpdate";

// Statistics.
inline const stdstr StatMsgTotal = u"StatMsgTotal";
inline const stdstr StatSpamTotal = u"StatSpamTotal";

// Close warning. Not read: the ini key ShowCloseWindow does this work.
inline const stdstr WarnOnCloseWindow = u"WarnOnCloseWindow";

// Data files and folders of the service. The folder names use '/', as every path here does.
inline const stdstr TempName = u"Temp";
inline const stdstr HistoryFile = u"History.dat";
inline const stdstr DefaultsDatabase = u"defaults.db";
inline const stdstr TempDirValue = u"TempDir";
inline const stdstr ShieldSuiteFolder = u"Velloran/Velloran Shield Suite/Quillgate";
inline const stdstr VelloranQuillgateFolder = u"Velloran/Quillgate";

// Hidden-setting flags, honoured by the plug-in's pages.
inline const stdstr HideRBLText = u"HideRBLText";
inline const stdstr HideCountryText = u"HideCountryText";
inline const stdstr HideISPText = u"HideISPText";
inline const stdstr HideAccessCtrlText = u"HideAccessCtrlText";
inline const stdstr HideLoggingSetting = u"HideLoggingSetting";
inline const stdstr HideAutoListSetting = u"HideAutoListSetting";

// Engine log.
inline const stdstr QuillgateLoggingKey = u"\\Quillgate Logging";
inline const stdstr EngineLogKey = u"\\EngineLog";
inline const stdstr EngineLogType = u"Type";
inline const stdstr EngineLogSeverity = u"Severity";
inline const stdstr EngineLogFormat = u"Format";
inline const stdstr EngineLogParam1 = u"Param1";
inline const stdstr EngineLogParam2 = u"Param2";
inline const stdstr EngineLogMode = u"Mode";

// Program identity. The first is the user folder's name below the user's configuration
// folder (made by start-up); the second names the single-instance lock.
inline const stdstr UserFolderSuffix = u"/Quillgate";
inline const stdstr InstanceName = u"VelloranQuillgate";
inline const stdstr ProgramFileName = u"quillgate";
inline const stdstr ProductName = u"Quillgate";
inline const stdstr LegacyGuiFileName = u"VLTSGui.exe";

// Filter database tags: 8-bit strings, as the service's database stores them.
inline const std::string EmailGood = "EmailGood";
inline const std::string EmailBad = "EmailBad";
inline const std::string EmailHash = "EmailHash";
inline const std::string More = "More";
inline const std::string Smoke = "Smoke";
inline const std::string EmailCount = "EmailCount";
inline const std::string ColourHistSignatures = "ColourHistSignatures";
inline const std::string HaarWaveSignatures = "HaarWaveSignatures";
inline const std::string OrientHistSignatures = "OrientHistSignatures";
inline const std::string GoodCount = "nGood";
inline const std::string BadCount = "nBad";
inline const std::string WhiteList = "WhiteList";
inline const std::string Word = "Word";
inline const std::string Value = "Value";
inline const std::string CommentOpen = "<!--";
inline const std::string CommentClose = "-->";
inline const std::string AggregateEmailCount = "AggregateEmailCount";
inline const std::string AggregateEmailGood = "AggregateEmailGood";
inline const std::string AggregateEmailBad = "AggregateEmailBad";
inline const std::string Aggregate = "Aggregate";
inline const std::string AggregateTimeout = "AggregateTimeout";
inline const std::string WSURLCacheTag = "WSURLCache";
inline const std::string URLCacheTag = "URLCache";
inline const std::string CurrentCount = "nCurrent";
inline const std::string OldestCount = "nOldest";
inline const std::string AggregateCount = "nAggregate";

// Known mail clients.
inline const stdstr OutlookClient = u"outlook.exe";
inline const stdstr OutlookExpressClient = u"msimn.exe";
inline const stdstr NetscapeClient = u"netscp.exe";
inline const stdstr EudoraClient = u"eudora.exe";
inline const stdstr OperaClient = u"opera.exe";
inline const stdstr MozillaClient = u"mozilla.exe";
inline const stdstr ThunderbirdClient = u"thunderbird.exe";
inline const stdstr WindowsMailClient = u"winmail.exe";

// Updater: the program beside this one (read by the update launchers) and its key.
inline const stdstr UpdaterFileName = u"quillgate-update";
inline const stdstr UpdaterKey = u"Software\\Velloran\\Fresh Update\\QG\\Updates\\Quillgate.exe";

// Token files.
inline const stdstr SpamTokenFile = u"QG_SpamTokenFile";
inline const stdstr CleanTokenFile = u"QG_CleanTokenFile";
inline const stdstr URLCacheFile = u"URLCache";
inline const stdstr WSURLCacheFile = u"WSURLCache";

} // namespace SharedConstants
