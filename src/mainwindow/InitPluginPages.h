#pragma once
// The main window's half of the plug-in's start: hands over the sink, collects the page
// records, passes the configuration path and the language, and creates the Status,
// Address list and Settings pages in that order. Uses the objects in PluginPointers.h.

#include "foundation/stdstr.h"

#include <cstdint>

class IPageHost;

// False when the plug-in's InitGUI failed; the window then comes up without pages, which
// is what the caller wants (it ignores the result and goes on).
bool InitPluginPages(IPageHost& host);

// The language id of the setting Language, read as _wtoi reads: leading blanks, a sign,
// then digits up to the first other character; 0 when there are none.
std::int32_t LanguageIdFromSetting(const stdstr& setting);
