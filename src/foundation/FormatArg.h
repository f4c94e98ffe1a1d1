#pragma once
// One argument of a printf-style composition, captured with its C++ type so that the
// formatter can tell an argument that does not fit its conversion instead of reading
// memory the way C varargs would.

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace Corvane {

class FormatArg {
public:
    enum class Kind { Signed, Unsigned, Floating, WideText, NarrowText, Pointer, Character };

    template <std::signed_integral T>
    FormatArg(T v) : m_kind(Kind::Signed), m_signed(v) {}
    template <std::unsigned_integral T>
    requires(!std::same_as<T, bool>) FormatArg(T v) : m_kind(Kind::Unsigned), m_unsigned(v) {}
    FormatArg(bool v) : m_kind(Kind::Unsigned), m_unsigned(v ? 1u : 0u) {}
    template <class E>
    requires std::is_enum_v<E> FormatArg(E v)
        : FormatArg(static_cast<std::underlying_type_t<E>>(v)) {}
    FormatArg(char v) : m_kind(Kind::Character), m_unsigned(static_cast<unsigned char>(v)) {}
    FormatArg(char16_t v) : m_kind(Kind::Character), m_unsigned(v) {}
    FormatArg(char32_t v) : m_kind(Kind::Character), m_unsigned(v) {}
    FormatArg(double v) : m_kind(Kind::Floating), m_floating(v) {}
    FormatArg(float v) : m_kind(Kind::Floating), m_floating(v) {}

    // Text: a null pointer is kept as null and printed as "(null)", as the C library does.
    FormatArg(const char16_t* v) : m_kind(Kind::WideText), m_isNull(v == nullptr) {
        if (v)
            m_wide = std::u16string_view(v);
    }
    FormatArg(const std::u16string& v) : m_kind(Kind::WideText), m_wide(v) {}
    FormatArg(std::u16string_view v) : m_kind(Kind::WideText), m_wide(v) {}
    FormatArg(const char* v) : m_kind(Kind::NarrowText), m_isNull(v == nullptr) {
        if (v)
            m_narrow = std::string_view(v);
    }
    FormatArg(const std::string& v) : m_kind(Kind::NarrowText), m_narrow(v) {}
    FormatArg(std::string_view v) : m_kind(Kind::NarrowText), m_narrow(v) {}

    template <class T>
    requires(!std::same_as<std::remove_cv_t<T>, char> &&
             !std::same_as<std::remove_cv_t<T>, char16_t>) FormatArg(T* v)
        : m_kind(Kind::Pointer), m_unsigned(reinterpret_cast<std::uintptr_t>(v)) {}
    FormatArg(std::nullptr_t) : m_kind(Kind::Pointer), m_unsigned(0) {}

    Kind kind() const { return m_kind; }
    std::int64_t asSigned() const { return m_signed; }
    std::uint64_t asUnsigned() const { return m_unsigned; }
    double asFloating() const { return m_floating; }
    std::u16string_view wide() const { return m_wide; }
    std::string_view narrow() const { return m_narrow; }
    bool isNullText() const { return m_isNull; }

private:
    Kind m_kind;
    union {
        std::int64_t m_signed;
        std::uint64_t m_unsigned;
        double m_floating = 0;
    };
    std::u16string_view m_wide;
    std::string_view m_narrow;
    bool m_isNull = false;
};

} // namespace Corvane
