// Base64Decode on arbitrary bytes must stay within the room it sized, and every input must
// come back unchanged from an encode and a decode.
#include "foundation/Base64.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// The decoder told step by step, byte by byte, with no table: the judge of the fast one.
int Value(std::uint8_t byte) {
    static const char alphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    if (byte == 0 || byte >= 128)
        return -1;
    const char* found = std::strchr(alphabet, byte);
    return found ? static_cast<int>(found - alphabet) : -1;
}

void ReferenceDecode(const ByteArray& input, ByteArray& output) {
    const std::uint32_t n = input.size();
    std::uint32_t index = 0;
    if (n >= 2 && input.getAt(0) == '+' && input.getAt(1) == ' ')
        index = 2;
    if (input.getAt(index) == '\r' && index < n)
        return;
    output.resize(n / 4 * 3);
    for (std::uint32_t i = 0; i < output.size(); ++i)
        output.setAt(i, 0);
    std::uint32_t written = 0;
    for (;;) {
        std::uint8_t bytes[4];
        int values[4];
        for (int k = 0; k < 4; ++k) {
            bytes[k] = index + k < n ? input.getAt(index + k) : 0;
            values[k] = bytes[k] == '=' && k >= 2 ? 0 : Value(bytes[k]);
            if (values[k] < 0)
                return;
        }
        output.setAt(written++, static_cast<std::uint8_t>((values[0] << 2) | (values[1] >> 4)));
        if (bytes[2] != '=') {
            output.setAt(written++, static_cast<std::uint8_t>((values[1] << 4) | (values[2] >> 2)));
            if (bytes[3] != '=')
                output.setAt(written++, static_cast<std::uint8_t>((values[2] << 6) | values[3]));
        }
        index += 4;
        if (!(index < n && input.getAt(index) != '\r' && bytes[3] != '='))
            break;
    }
    output.resize(written);
}

bool Same(const ByteArray& a, const ByteArray& b) {
    return a.size() == b.size() &&
           (a.size() == 0 || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > (1u << 20))
        return 0;
    ByteArray input;
    input.set(data, static_cast<std::uint32_t>(size));

    ByteArray decoded;
    Base64Decode(input, decoded);
    Require(decoded.size() <= Base64DecodedSize(static_cast<std::uint32_t>(size)));

    // The same into an output whose block is larger than needed: the kept-block path.
    ByteArray reused(static_cast<std::uint32_t>(size) + 7, 0x5A);
    Base64Decode(input, reused);
    Require(reused.size() <= size + 7);

    ByteArray expected;
    ReferenceDecode(input, expected);
    Require(Same(decoded, expected));
    ByteArray expectedReused(static_cast<std::uint32_t>(size) + 7, 0x5A);
    ReferenceDecode(input, expectedReused);
    Require(Same(reused, expectedReused));

    ByteArray encoded;
    Base64Encode(input, encoded);
    Require(encoded.size() == Base64Size(static_cast<std::uint32_t>(size)));
    for (std::uint32_t i = 0; i < encoded.size(); ++i) {
        const std::uint8_t c = encoded.getAt(i);
        Require((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                c == '+' || c == '/' || c == '=');
    }

    ByteArray back;
    Base64Decode(encoded, back);
    Require(back.size() == size);
    Require(size == 0 || std::memcmp(back.data(), data, size) == 0);
    return 0;
}
