// quillgate-update: the updater stand-in. It does no updating: it records its command line
// (UpdateCallRecord) and exits with the code in QUILLGATE_UPDATE_EXIT (default 0), so that
// tests and the demo can see how the program called it and choose what it answers.
#include "updater/UpdateCallRecord.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// The chosen exit code, 0..255; a text that is not one is reported and gives 1.
int ChosenExitCode() {
    const char* text = std::getenv("QUILLGATE_UPDATE_EXIT");
    if (!text || !*text)
        return 0;
    const std::string value(text);
    int code = 0;
    const auto [end, failure] = std::from_chars(value.data(), value.data() + value.size(), code);
    if (failure != std::errc() || end != value.data() + value.size() || code < 0 || code > 255) {
        std::fprintf(stderr, "quillgate-update: QUILLGATE_UPDATE_EXIT=%s is not 0..255\n", text);
        return 1;
    }
    return code;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    std::string error;
    if (!UpdateCallRecord::append(UpdateCallRecord::path(), arguments, error))
        std::fprintf(stderr, "quillgate-update: %s\n", error.c_str());
    return ChosenExitCode();
}
