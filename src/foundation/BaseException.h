#pragma once
// The application's exception. It stores a key and its parameters joined by "##" rather
// than words: the translation store turns the key into a sentence only when it is shown,
// and the trace log keeps the key form. Composing never lets a failure out.

#include "foundation/stdstr.h"

#include <span>

class BaseException {
public:
    template <class... Args>
    BaseException(const char16_t* file, int line, int code, const char16_t* function,
                  const char16_t* format, const Args&... args)
        : BaseException(file, line, code, function, format,
                        std::span<const Corvane::FormatArg>(Corvane::makeFormatArgs(args...))) {}
    BaseException(const char16_t* file, int line, int code, const char16_t* function,
                  const char16_t* format, std::span<const Corvane::FormatArg> args);
    BaseException(const BaseException&) = default;
    BaseException& operator=(const BaseException&) = default;
    virtual ~BaseException() = default;

    virtual const stdstr& GetMessage() const { return m_message; }
    virtual int GetCode() const { return m_code; }
    virtual const stdstr& GetFile() const { return m_file; }
    virtual int GetLine() const { return m_line; }

    template <class... Args>
    void AddDescription(bool prepend, const char16_t* format, const Args&... args) {
        const auto packed = Corvane::makeFormatArgs(args...);
        AddDescriptionArgs(prepend, format, packed);
    }
    template <class... Args>
    void AddFunction(bool prepend, const char16_t* format, const Args&... args) {
        const auto packed = Corvane::makeFormatArgs(args...);
        AddFunctionArgs(prepend, format, packed);
    }
    virtual void AddDescriptionArgs(bool prepend, const char16_t* format,
                                    std::span<const Corvane::FormatArg> args);
    virtual void AddFunctionArgs(bool prepend, const char16_t* format,
                                 std::span<const Corvane::FormatArg> args);

    // The text for the trace log: the function and the message, or the file and line when
    // no function was named.
    virtual stdstr GetFullMessage() const;

private:
    int m_code;
    int m_line;
    stdstr m_file;
    stdstr m_message;
    stdstr m_function;
};
