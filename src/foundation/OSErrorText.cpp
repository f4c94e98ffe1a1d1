#include "foundation/ErrorKeys.h"

#include <string.h>

stdstr ComposeOSErrorText(int code, const char* systemText) {
    if (!systemText)
        return stringFmt(u"%d", code);
    stdstr text(u"Windows OS Error: ");
    text += stdstr::toTString(systemText);
    auto cut = text.find(u"\r\n");
    if (cut == stdstr::npos)
        cut = text.find(u'\n');
    if (cut != stdstr::npos)
        text.resize(cut);
    return text;
}

stdstr GetOSErrorText(int code) {
    // strerrordesc_np answers null for a number that has no text, where strerror would
    // make up "Unknown error N".
    return ComposeOSErrorText(code, ::strerrordesc_np(code));
}
