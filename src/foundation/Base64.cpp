#include "foundation/Base64.h"

#include <array>
#include <cstring>
#include <limits>

namespace {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t PadByte = '=';
constexpr std::uint8_t CarriageReturn = '\r';

// Two characters for every 12-bit half of a group, so that a group is two table reads.
constexpr std::array<std::array<char, 2>, 4096> makePairTable() {
    std::array<std::array<char, 2>, 4096> table{};
    for (unsigned i = 0; i < 4096; ++i)
        table[i] = {Alphabet[i >> 6], Alphabet[i & 63]};
    return table;
}
constexpr auto PairTable = makePairTable();

// Value of each byte: 0..63 for the alphabet, Pad for '=', Invalid for everything else
// (every byte of 128 or more included).
constexpr std::uint8_t Invalid = 0xFF;
constexpr std::uint8_t Pad = 64;
constexpr std::array<std::uint8_t, 256> makeDecodeTable() {
    std::array<std::uint8_t, 256> table{};
    for (auto& value : table)
        value = Invalid;
    for (std::uint8_t i = 0; i < 64; ++i)
        table[static_cast<unsigned char>(Alphabet[i])] = i;
    table[PadByte] = Pad;
    return table;
}
constexpr auto DecodeTable = makeDecodeTable();

// The same values already shifted to their place in a group, so that a group of four
// letters is four reads and three ors; any byte that is not a letter sets the top bits.
constexpr std::uint32_t NotALetter = 0xFF000000;
constexpr std::array<std::uint32_t, 256> makeShiftedTable(int shift) {
    std::array<std::uint32_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i)
        table[i] = DecodeTable[i] < Pad ? std::uint32_t{DecodeTable[i]} << shift : NotALetter;
    return table;
}
constexpr auto Shifted18 = makeShiftedTable(18);
constexpr auto Shifted12 = makeShiftedTable(12);
constexpr auto Shifted6 = makeShiftedTable(6);
constexpr auto Shifted0 = makeShiftedTable(0);

} // namespace

std::uint32_t Base64Size(std::uint32_t n) {
    return n / 3 * 4 + (n % 3 != 0 ? 4 : 0);
}

std::uint32_t Base64DecodedSize(std::uint32_t n) {
    return n / 4 * 3;
}

void Base64Encode(const ByteArray& input, ByteArray& output) {
    if (&input == &output) {
        const ByteArray copy(input);
        Base64Encode(copy, output);
        return;
    }
    const std::uint32_t n = input.size();
    // Past 3 GiB the encoded size no longer fits the array's 32-bit size.
    const std::uint64_t encodedSize = std::uint64_t{n} / 3 * 4 + (n % 3 != 0 ? 4 : 0);
    if (encodedSize > std::numeric_limits<std::uint32_t>::max()) {
        output.resize(0);
        return;
    }
    output.resize(Base64Size(n));
    if (n == 0)
        return;

    const std::uint8_t* in = input.data();
    auto* out = reinterpret_cast<char*>(output.data());
    std::uint32_t written = 0;
    std::uint32_t i = 0;
    for (const std::uint32_t whole = n / 3 * 3; i < whole; i += 3) {
        const std::uint32_t group =
            (std::uint32_t{in[i]} << 16) | (std::uint32_t{in[i + 1]} << 8) | in[i + 2];
        std::memcpy(out + written, PairTable[group >> 12].data(), 2);
        std::memcpy(out + written + 2, PairTable[group & 0xFFF].data(), 2);
        written += 4;
    }
    if (const std::uint32_t rest = n - i; rest != 0) {
        const std::uint32_t group =
            (std::uint32_t{in[i]} << 16) | (rest == 2 ? std::uint32_t{in[i + 1]} << 8 : 0);
        out[written++] = Alphabet[group >> 18];
        out[written++] = Alphabet[(group >> 12) & 63];
        out[written++] = rest == 2 ? Alphabet[(group >> 6) & 63] : '=';
        out[written++] = '=';
    }
    output.resize(written);
}

void Base64Decode(const ByteArray& input, ByteArray& output) {
    if (&input == &output) {
        const ByteArray copy(input);
        Base64Decode(copy, output);
        return;
    }
    const std::uint32_t n = input.size();
    const std::uint8_t* in = input.data();
    std::uint32_t index = 0;
    if (n >= 2 && in[0] == '+' && in[1] == ' ')
        index = 2;
    if (index < n && in[index] == CarriageReturn)
        return;

    output.resize(Base64DecodedSize(n));
    std::uint8_t* out = output.data();
    // A broken input leaves the output at this size, so what it held before must not show.
    if (out)
        std::memset(out, 0, output.size());
    std::uint32_t written = 0;
    // Groups lie wholly inside the input, so at most n / 4 of them are written and the
    // output's size is never passed. First the whole groups of four letters of the
    // alphabet; a carriage return, a pad or a bad byte leaves this loop for the careful
    // path below, which tells them apart.
    while (n - index >= 4) {
        const std::uint32_t group = Shifted18[in[index]] | Shifted12[in[index + 1]] |
                                    Shifted6[in[index + 2]] | Shifted0[in[index + 3]];
        if (group & NotALetter)
            break;
        out[written] = static_cast<std::uint8_t>(group >> 16);
        out[written + 1] = static_cast<std::uint8_t>(group >> 8);
        out[written + 2] = static_cast<std::uint8_t>(group);
        written += 3;
        index += 4;
    }
    for (;;) {
        // The text ends at its end or at a carriage return behind a group; the input cannot
        // start with one here, that case returned above.
        if (index >= n || in[index] == CarriageReturn)
            break;
        // A group that reaches past the input has bytes outside the alphabet.
        if (n - index < 4)
            return;
        const std::uint8_t a = DecodeTable[in[index]];
        const std::uint8_t b = DecodeTable[in[index + 1]];
        const std::uint8_t c = DecodeTable[in[index + 2]];
        const std::uint8_t d = DecodeTable[in[index + 3]];
        // '=' only in the last two places.
        if (a >= Pad || b >= Pad || c > Pad || d > Pad)
            return;
        const std::uint8_t cBits = c & 63;
        const std::uint8_t dBits = d & 63;
        out[written++] = static_cast<std::uint8_t>((a << 2) | (b >> 4));
        // A pad in the third place ends the use of the group: its fourth byte is not read.
        if (c != Pad) {
            out[written++] = static_cast<std::uint8_t>((b << 4) | (cBits >> 2));
            if (d != Pad)
                out[written++] = static_cast<std::uint8_t>((cBits << 6) | dBits);
        }
        index += 4;
        if (d == Pad)
            break;
    }
    output.resize(written);
}
