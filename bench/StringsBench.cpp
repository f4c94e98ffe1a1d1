// Throughput of the string edges: Base64 of 64 KiB message bodies against a plain copy of
// the same bytes (the floor), UTF-8 to UTF-16 of mixed text against glibc's iconv, and the
// composition of a typical trace line against snprintf of the same narrow line.
#include "foundation/Base64.h"
#include "foundation/StringHelper.h"
#include "foundation/stdstr.h"

#include <benchmark/benchmark.h>

#include <bit>
#include <cstdio>
#include <cstring>
#include <iconv.h>
#include <random>
#include <string>

namespace {

constexpr std::uint32_t BodySize = 64 * 1024;

ByteArray RandomBytes(std::uint32_t size) {
    std::mt19937 random(7);
    ByteArray bytes(size, 0);
    for (std::uint32_t i = 0; i < size; ++i)
        bytes.setAt(i, static_cast<std::uint8_t>(random()));
    return bytes;
}

// About 64 KiB of mostly ASCII text with accented letters, symbols and emoji, as in mail
// subjects and language files.
std::string MixedText() {
    const std::string piece = "Subject: R\xC3\xA9sum\xC3\xA9 of the spam filter \xE2\x80\x94 "
                              "100 \xE2\x82\xAC saved, \xE6\x97\xA5\xE6\x9C\xAC "
                              "\xF0\x9F\x98\x80 ok\n";
    std::string text;
    while (text.size() < BodySize)
        text += piece;
    return text;
}

void BM_Floor_Memcpy64KiB(benchmark::State& state) {
    const ByteArray input = RandomBytes(BodySize);
    std::string output(BodySize, '\0');
    for (auto _ : state) {
        std::memcpy(output.data(), input.data(), BodySize);
        benchmark::DoNotOptimize(output.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * BodySize);
}
BENCHMARK(BM_Floor_Memcpy64KiB);

void BM_Base64Encode64KiB(benchmark::State& state) {
    const ByteArray input = RandomBytes(BodySize);
    ByteArray output;
    for (auto _ : state) {
        Base64Encode(input, output);
        benchmark::DoNotOptimize(output.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * BodySize);
}
BENCHMARK(BM_Base64Encode64KiB);

void BM_Base64Decode64KiB(benchmark::State& state) {
    ByteArray encoded;
    Base64Encode(RandomBytes(BodySize), encoded);
    ByteArray output;
    for (auto _ : state) {
        Base64Decode(encoded, output);
        benchmark::DoNotOptimize(output.data());
    }
    // Counted in decoded bytes, so that the figure compares with the encoder's.
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * BodySize);
}
BENCHMARK(BM_Base64Decode64KiB);

void BM_Utf8ToUtf16_Mixed(benchmark::State& state) {
    const std::string text = MixedText();
    for (auto _ : state) {
        stdstr wide = stdstr::toTString(text.c_str());
        benchmark::DoNotOptimize(wide.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_Utf8ToUtf16_Mixed);

void BM_Floor_Utf8ToUtf16_Iconv(benchmark::State& state) {
    const std::string text = MixedText();
    const iconv_t cd =
        iconv_open(std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE", "UTF-8");
    std::u16string wide(text.size(), u'\0');
    for (auto _ : state) {
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        char* in = const_cast<char*>(text.data());
        std::size_t inLeft = text.size();
        char* out = reinterpret_cast<char*>(wide.data());
        std::size_t outLeft = wide.size() * sizeof(char16_t);
        iconv(cd, &in, &inLeft, &out, &outLeft);
        benchmark::DoNotOptimize(wide.data());
    }
    iconv_close(cd);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_Floor_Utf8ToUtf16_Iconv);

void BM_Utf16ToUtf8_Mixed(benchmark::State& state) {
    const stdstr wide = stdstr::toTString(MixedText().c_str());
    for (auto _ : state) {
        std::string narrow = stdstr::fromTString(wide);
        benchmark::DoNotOptimize(narrow.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(wide.size() * sizeof(char16_t)));
}
BENCHMARK(BM_Utf16ToUtf8_Mixed);

void BM_StringFmt_TraceLine(benchmark::State& state) {
    const stdstr key(u"SOFTWARE\\Velloran\\VLQGSAGui");
    const stdstr error(u"Access is denied.");
    unsigned root = 0x80000002u;
    for (auto _ : state) {
        benchmark::DoNotOptimize(root);
        std::u16string line = Corvane::StringHelper::stringFmt(
            u"CRegistry::Open(0x%x, %s): failed, error (%s)", root, key, error);
        benchmark::DoNotOptimize(line.data());
    }
}
BENCHMARK(BM_StringFmt_TraceLine);

void BM_Floor_Snprintf_TraceLine(benchmark::State& state) {
    const std::string key = "SOFTWARE\\Velloran\\VLQGSAGui";
    const std::string error = "Access is denied.";
    unsigned root = 0x80000002u;
    for (auto _ : state) {
        benchmark::DoNotOptimize(root);
        // Composed into a stack buffer and copied into an owned string, as a caller of
        // snprintf that wants a string does.
        char buffer[256];
        const int length =
            std::snprintf(buffer, sizeof buffer, "CRegistry::Open(0x%x, %s): failed, error (%s)",
                          root, key.c_str(), error.c_str());
        std::string line(buffer, static_cast<std::size_t>(length));
        benchmark::DoNotOptimize(line.data());
    }
}
BENCHMARK(BM_Floor_Snprintf_TraceLine);

} // namespace
