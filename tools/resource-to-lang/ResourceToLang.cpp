// resource-to-lang: makes the English language file from the program's resource header and
// string table. The "QGSection" comes from QGEntString::ResourceToString; in front of it
// goes the "General" section that discovery and the translation store read.
//
//   resource-to-lang [options] <resource.h> <output file>
//     --charset=<name>       default iso-8859-1
//     --name=<text>          the language's own name, default English
//     --english-name=<text>  default English (what identifies the file)
//     --brisk-id=<text>      the updater's language id, default English (US)
//     --web-link=<address>   default the deployment's home page
//     --append=<file>        "Key=Sentence" lines (UTF-8) added behind the string table's
//                            keys: the sentences of the error keys, which have no id
//     --verbose              show every trace line of the conversion
#include "StderrTraceSink.h"
#include "StringTable.h"
#include "foundation/BaseException.h"
#include "foundation/FileString.h"
#include "foundation/Trace.h"
#include "foundation/stdstr.h"
#include "localisation/QGEntString.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

struct GeneralField {
    const char* option;
    const char16_t* key;
    stdstr value;
};

void PrintUsage() {
    std::fputs("usage: resource-to-lang [--charset=X] [--name=X] [--english-name=X] "
               "[--brisk-id=X] [--web-link=X] [--append=FILE] [--verbose] <resource.h> "
               "<output file>\n",
               stderr);
}

// The INI reader cuts a value at "//" unless a ':' stands before it and drops blanks at its
// end: a General value that it would change is refused rather than written wrong.
bool SurvivesReader(const stdstr& value) {
    if (!value.empty() && value.back() == u' ')
        return false;
    for (std::size_t slash = value.find(u"//"); slash != stdstr::npos;
         slash = value.find(u"//", slash + 2)) {
        if (slash == 0 || value[slash - 1] != u':')
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<GeneralField> fields{
        {"--charset=", u"Charset", u"iso-8859-1"},
        {"--name=", u"Name", u"English"},
        {"--english-name=", u"EnglishName", u"English"},
        {"--brisk-id=", u"BriskUpdateID", u"English (US)"},
        {"--web-link=", u"WebTransLink", u"" QG_HOME_PAGE "/"},
    };
    bool verbose = false;
    std::string appendPath;
    std::vector<std::string> paths;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument(argv[i]);
        if (argument == "--verbose") {
            verbose = true;
            continue;
        }
        if (argument.starts_with("--append=")) {
            appendPath = argument.substr(9);
            continue;
        }
        bool known = false;
        for (GeneralField& field : fields) {
            const std::string_view option(field.option);
            if (argument.substr(0, option.size()) == option) {
                field.value = stdstr::toTString(argument.substr(option.size()));
                known = true;
            }
        }
        if (!known && argument.substr(0, 2) == "--") {
            PrintUsage();
            return 2;
        }
        if (!known)
            paths.emplace_back(argument);
    }
    if (paths.size() != 2) {
        PrintUsage();
        return 2;
    }
    for (const GeneralField& field : fields) {
        if (field.value.empty() || !SurvivesReader(field.value)) {
            std::fprintf(stderr,
                         "resource-to-lang: %s must not be empty, end in a blank or hold "
                         "\"//\" without a ':' before it\n",
                         field.option);
            return 2;
        }
    }
    if (verbose)
        TraceAddModule(std::make_unique<StderrTraceSink>(0xFFFFFFFFu));

    const stdstr header = stdstr::toTString(paths[0]);
    const stdstr output = stdstr::toTString(paths[1]);
    if (!QGEntString::ResourceToString(header, output)) {
        std::fprintf(stderr, "resource-to-lang: could not convert %s into %s\n", paths[0].c_str(),
                     paths[1].c_str());
        return 1;
    }

    try {
        FileString section;
        section.openFile(output);
        stdstr general = u"[General]\r\n";
        for (const GeneralField& field : fields)
            general += stdstr(field.key) + u"=" + field.value + u"\r\n";
        general += u"\r\n";

        stdstr extra;
        if (!appendPath.empty()) {
            FileString sentences;
            sentences.openFile(stdstr::toTString(appendPath));
            stdstr line;
            while (sentences.getLine(line)) {
                if (!line.empty())
                    extra += line + u"\r\n";
            }
        }

        FileString file;
        file.setText(general + section.getText() + extra);
        if (!file.saveFile(output, 65001)) {
            std::fprintf(stderr, "resource-to-lang: could not write %s\n", paths[1].c_str());
            return 1;
        }
    } catch (const BaseException& e) {
        std::fprintf(stderr, "resource-to-lang: %s\n",
                     stdstr::fromTString(e.GetFullMessage()).c_str());
        return 1;
    }
    return 0;
}
