// The package-note reader on arbitrary bytes: it must never read outside the image, a text
// it finds lies inside the image and holds no NUL, and the JSON reader and the version
// rule take whatever the note holds.
#include "foundation/ApplicationFinder.h"
#include "foundation/ElfPackageNote.h"
#include "foundation/PackageMetadata.h"
#include "foundation/stdstr.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = ElfPackageNote::textOf(std::span<const std::uint8_t>(data, size));
    if (!text)
        return 0;
    Require(text->size() <= size);
    Require(text->find('\0') == std::string::npos);
    const auto metadata = PackageMetadata::parse(*text);
    if (metadata && metadata->version) {
        int numbers[4] = {-1, -1, -1, -1};
        Corvane::ApplicationFinder::parseVersionText(
            stdstr::toTString(*metadata->version), numbers[0], numbers[1], numbers[2], numbers[3]);
    }
    return 0;
}
