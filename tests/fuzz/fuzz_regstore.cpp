// The registry store's parser on arbitrary bytes: it never crashes, everything it yields
// is something the store can hold, and what it yields survives writing and reading again
// unchanged (the written text being a fixed point of the two).
#include "foundation/RegDocument.h"
#include "foundation/RegistryTypes.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using Corvane::RegDocument;

void Require(bool condition) {
    if (!condition)
        std::abort();
}

void CheckHoldable(const RegDocument& document) {
    const auto& keys = document.keys();
    Require(!keys.empty() && keys[0].path.empty());
    for (const auto& key : keys) {
        std::u16string normalised;
        Require(RegDocument::normaliseKeyPath(key.path, normalised) && normalised == key.path);
        Require(document.findKey(key.path) == &key);
        for (const auto& value : key.values) {
            Require(RegDocument::isValidValueName(value.name));
            Require(value.data.size() <= RegDocument::MaxValueBytes);
            Require(document.findValue(key.path, value.name) == &value);
        }
    }
}

void RoundTrip(std::string_view bytes, std::uint32_t root) {
    const RegDocument first = RegDocument::parse(bytes, root);
    CheckHoldable(first);
    const std::string text = first.serialise();
    const RegDocument second = RegDocument::parse(text, root);
    Require(second == first);
    Require(second.serialise() == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    RoundTrip(bytes, HKEY_LOCAL_MACHINE);
    RoundTrip(bytes, HKEY_CURRENT_USER);
    return 0;
}
