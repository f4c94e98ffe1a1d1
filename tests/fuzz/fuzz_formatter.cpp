// The composer on arbitrary formats, narrow and wide, with arguments of every kind drawn
// from the input: it must never crash or read out of bounds, a refusal must leave the
// output as it was, and the result must stay within a bound that follows from the format.
#include "foundation/Formatter.h"
#include "foundation/stdstr.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t MaxArgs = 8;
constexpr std::size_t MaxTextArg = 64;
// The largest width or precision the composer accepts, with room for a number's digits and
// a floating-point value's integer part.
constexpr std::size_t MaxPerConversion = 2 * (std::size_t{1} << 20) + 512;

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// Arguments and the texts they point into; the texts are reserved up front so that no
// argument's view moves.
struct Arguments {
    std::vector<std::string> narrowTexts;
    std::vector<std::u16string> wideTexts;
    std::vector<Corvane::FormatArg> args;
};

void Draw(FuzzedDataProvider& input, Arguments& out) {
    out.narrowTexts.reserve(MaxArgs);
    out.wideTexts.reserve(MaxArgs);
    const std::size_t count = input.ConsumeIntegralInRange<std::size_t>(0, MaxArgs);
    for (std::size_t i = 0; i < count; ++i) {
        switch (input.ConsumeIntegralInRange<int>(0, 12)) {
        case 0:
            out.args.emplace_back(input.ConsumeIntegral<std::int64_t>());
            break;
        case 1:
            out.args.emplace_back(input.ConsumeIntegral<int>());
            break;
        case 2:
            out.args.emplace_back(input.ConsumeIntegral<std::uint64_t>());
            break;
        case 3:
            out.args.emplace_back(input.ConsumeIntegral<unsigned>());
            break;
        case 4:
            out.args.emplace_back(input.ConsumeFloatingPoint<double>());
            break;
        case 5: {
            out.narrowTexts.push_back(input.ConsumeRandomLengthString(MaxTextArg));
            out.args.emplace_back(out.narrowTexts.back());
            break;
        }
        case 6: {
            const std::string bytes = input.ConsumeRandomLengthString(MaxTextArg * 2);
            std::u16string text(bytes.size() / 2, u'\0');
            for (std::size_t k = 0; k < text.size(); ++k)
                text[k] =
                    static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * k]) |
                                          (static_cast<unsigned char>(bytes[2 * k + 1]) << 8));
            out.wideTexts.push_back(std::move(text));
            out.args.emplace_back(out.wideTexts.back());
            break;
        }
        case 7:
            out.args.emplace_back(static_cast<const char*>(nullptr));
            break;
        case 8:
            out.args.emplace_back(static_cast<const char16_t*>(nullptr));
            break;
        case 9:
            out.args.emplace_back(
                reinterpret_cast<const void*>(input.ConsumeIntegral<std::uintptr_t>()));
            break;
        case 10:
            out.args.emplace_back(static_cast<char>(input.ConsumeIntegral<std::uint8_t>()));
            break;
        case 11:
            out.args.emplace_back(static_cast<char16_t>(input.ConsumeIntegral<std::uint16_t>()));
            break;
        default:
            out.args.emplace_back(static_cast<char32_t>(input.ConsumeIntegral<std::uint32_t>()));
            break;
        }
    }
}

template <class Text>
void Check(const Text& format, std::span<const Corvane::FormatArg> args, std::size_t maxLength) {
    Text out;
    out.push_back('p');
    const bool accepted = Corvane::formatAppend(out, format, args, maxLength);
    if (!accepted) {
        Require(out.size() == 1 && out[0] == 'p');
        return;
    }
    Require(out.size() >= 1 && out[0] == 'p');
    Require(maxLength == Text::npos ? true : out.size() <= std::max<std::size_t>(maxLength, 1));
    // Every conversion takes at least two characters of the format; text arguments may
    // grow by three when UTF-16 becomes UTF-8.
    const std::size_t bound = 1 + format.size() * (MaxPerConversion + 3 * MaxTextArg * 2);
    Require(out.size() <= bound);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const bool limited = input.ConsumeBool();
    const std::size_t maxLength =
        limited ? input.ConsumeIntegralInRange<std::size_t>(0, 4096) : std::string::npos;
    Arguments arguments;
    Draw(input, arguments);
    std::string format = input.ConsumeRemainingBytesAsString();
    // Without a limit a format of many huge widths is slow, not wrong: keep it short.
    if (!limited && format.size() > 48)
        format.resize(48);
    const std::span<const Corvane::FormatArg> args(arguments.args);

    Check(format, args, maxLength);

    std::u16string wide(format.size(), u'\0');
    for (std::size_t i = 0; i < format.size(); ++i)
        wide[i] = static_cast<char16_t>(static_cast<unsigned char>(format[i]));
    Check(wide, args, maxLength);
    // Pairs of bytes as UTF-16 units, for formats with characters beyond Latin-1.
    std::u16string units(format.size() / 2, u'\0');
    for (std::size_t k = 0; k < units.size(); ++k)
        units[k] = static_cast<char16_t>(static_cast<unsigned char>(format[2 * k]) |
                                         (static_cast<unsigned char>(format[2 * k + 1]) << 8));
    Check(units, args, maxLength);

    // The entry points of stdstr: the limit of Format always holds.
    const stdstr terminated(wide.substr(0, wide.find(u'\0')));
    stdstr formatted;
    formatted.FormatArgs(terminated.c_str(), args);
    Require(formatted.size() <= stdstr::FormatLimit);
    if (terminated.size() <= 48)
        (void)stringFmtArgs(terminated.c_str(), args);
    return 0;
}
