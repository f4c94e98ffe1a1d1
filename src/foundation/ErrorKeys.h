#pragma once
// Keys of the sentences that exceptions carry, and the templates that join a key with its
// parameters. The language files hold the sentences; some keys are thrown by no code of
// this program and exist for the plug-in's and the language files' sake.

#include "foundation/stdstr.h"

namespace ErrorKeys {
inline const stdstr QGFuncFailed = u"QGFuncFailed";
inline const stdstr QGMemAlloc = u"QGMemAlloc";
inline const stdstr QGOpenFile = u"QGOpenFile";
inline const stdstr QGReadFile = u"QGReadFile";
inline const stdstr LoadDLL = u"LoadDLL";
inline const stdstr LoadFunc = u"LoadFunc";
inline const stdstr ExctractProcInfo = u"ExctractProcInfo";
inline const stdstr OpenLSAPolicy = u"OpenLSAPolicy";
inline const stdstr QueryLSAPolicy = u"QueryLSAPolicy";
inline const stdstr QueryTokenMembership = u"QueryTokenMembership";
inline const stdstr QGFailMainDlg = u"QGFailMainDlg";
inline const stdstr QGInitFailed = u"QGInitFailed";
inline const stdstr QGInvalidIndex = u"QGInvalidIndex";
inline const stdstr QGElementNotFound = u"QGElementNotFound";
inline const stdstr QGUnhandledException = u"QGUnhandledException";
inline const stdstr QGLockTimeout = u"QGLockTimeout";
inline const stdstr QGWaitTimeout = u"QGWaitTimeout";
inline const stdstr QGWriteFile = u"QGWriteFile";
inline const stdstr QGFailedSignIni = u"QGFailedSignIni";
inline const stdstr QGFileDoesNotExist = u"QGFileDoesNotExist";
} // namespace ErrorKeys

// "##" joins the fields of one keyed text; "####" joins several keyed texts.
namespace MessageTemplates {
inline constexpr const char16_t* KeyWith2Params = u"%s##%s##%s";
inline constexpr const char16_t* KeyWith3Params = u"%s##%s##%s##%s";
inline constexpr const char16_t* KeyWith4Params = u"%s##%s##%s##%s##%s";
inline constexpr const char16_t* KeyWith5Params = u"%s##%s##%s##%s##%s##%s";
inline constexpr const char16_t* KeyWith6Params = u"%s##%s##%s##%s##%s##%s##%s";
inline constexpr const char16_t* KeyWith7Params = u"%s##%s##%s##%s##%s##%s##%s##%s";
inline constexpr const char16_t* FieldSeparator = u"##";
inline constexpr const char16_t* SentenceSeparator = u"####";
} // namespace MessageTemplates

// Text for an errno value: "Windows OS Error: " and the system's text cut at its first
// line end; for a code without a system text, the bare number. The wording is kept so
// that the messages read the same on every platform.
stdstr GetOSErrorText(int code);
// The same from a given system text (null: the system has none), for the cutting rules.
stdstr ComposeOSErrorText(int code, const char* systemText);
