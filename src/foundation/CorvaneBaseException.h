#pragma once
// The foundation's own exception: it carries a ready text. Thrown by value, caught by
// reference; it is deliberately not part of the standard exception hierarchy.

#include <string>

namespace Corvane {

class BaseException {
public:
    BaseException(const std::u16string& file, int line, const std::u16string& message,
                  int code = -1);
    virtual ~BaseException() = default;

    virtual std::u16string GetMessage() const { return m_message; }
    virtual int GetCode() const { return m_code; }

private:
    int m_code;
    int m_line;
    std::u16string m_file;
    std::u16string m_message;
};

} // namespace Corvane
