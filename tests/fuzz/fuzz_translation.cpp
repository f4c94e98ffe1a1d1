// Composed translation texts ("key##param##param####key##...") of arbitrary content through
// the translation store with a small language loaded. Nothing escapes and nothing crashes;
// a text whose key the language lacks comes back as it went in, its <BR/> tags turned into
// line breaks.
#include "foundation/stdstr.h"
#include "localisation/QGInternationalizationManager.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

const std::string LanguageFile = "\xEF\xBB\xBF[General]\r\n"
                                 "Charset=iso-8859-1\r\n"
                                 "Name=English\r\n"
                                 "EnglishName=English\r\n"
                                 "BriskUpdateID=English (US)\r\n"
                                 "[QGSection]\r\n"
                                 "QGFuncFailed=The function %s failed: %s\r\n"
                                 "QGInitFailed=Quillgate could not start.\r\n"
                                 "QGOpenFile=The file %s could not be opened: %s<BR/>%s\r\n"
                                 "Lines=one#\\#rtwo#\\#nthree<BR/>four\r\n"
                                 "Empty=\r\n"
                                 "Self=%s%s%s\r\n"
                                 "A=a\r\n";
const std::set<stdstr> Keys{u"QGFuncFailed", u"QGInitFailed", u"QGOpenFile", u"Lines",
                            u"Empty",        u"Self",         u"A"};

CQGInternationalizationManager& Store() {
    static CQGInternationalizationManager* store = [] {
        static CQGInternationalizationManager loaded;
        const int fd = ::memfd_create("fuzz_translation", MFD_CLOEXEC);
        Require(fd != -1);
        Require(::write(fd, LanguageFile.data(), LanguageFile.size()) ==
                static_cast<ssize_t>(LanguageFile.size()));
        loaded.LoadTranslationFile(stdstr::toTString("/proc/self/fd/" + std::to_string(fd)));
        stdstr out;
        Require(loaded.GetTranslatedString(out, u"QGInitFailed") == u"Quillgate could not start.");
        return &loaded;
    }();
    return *store;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CQGInternationalizationManager& store = Store();
    // The first byte chooses how the rest is read: UTF-8, or raw UTF-16 units.
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    stdstr text;
    if (data[0] & 1) {
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                                 (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    } else {
        text = stdstr::toTString(bytes);
    }

    stdstr out;
    store.GetTranslatedString(out, text);
    const std::size_t field = text.find(u"##");
    if (text.find(u"####") == stdstr::npos && !Keys.count(stdstr(text.substr(0, field))))
        Require(out == replaceAll(text, u"<BR/>", u"\r\n"));

    // The other two forms with the same text as parameters.
    store.GetTranslatedString(out, u"QGOpenFile", text);
    std::vector<stdstr> parameters;
    CQGInternationalizationManager::FillParamVector(text, parameters);
    Require(!parameters.empty());
    store.GetTranslatedString(out, u"Self", parameters);
    return 0;
}
