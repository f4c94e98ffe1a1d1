#include "foundation/Application.h"

#include "foundation/CorvaneBaseException.h"
#include "foundation/stdstr.h"

#include <unistd.h>
#include <utility>

namespace Corvane {
namespace {

constexpr const char16_t* ThisFile = u"Application.cpp";

std::u16string ReadExePath() {
    // 4096 characters, as the Windows module-name buffer; a longer path is no path.
    char buffer[4096];
    const ssize_t n = ::readlink("/proc/self/exe", buffer, sizeof buffer);
    if (n <= 0 || static_cast<std::size_t>(n) >= sizeof buffer)
        return {};
    return stdstr::toTString(std::string_view(buffer, static_cast<std::size_t>(n)));
}

} // namespace

Application::Application() : Application(ReadExePath()) {}

Application::Application(std::u16string fullPath) : m_fullPath(std::move(fullPath)) {
    if (m_fullPath.empty())
        throw BaseException(ThisFile, __LINE__,
                            u"Application::Application() - GetModuleFileName failed");
}

Application::~Application() = default;

std::u16string Application::ExeName() const {
    const auto slash = m_fullPath.rfind(u'/');
    if (slash == std::u16string::npos)
        throw BaseException(ThisFile, __LINE__, u"Application::ExeName() - no exe name");
    return m_fullPath.substr(slash + 1);
}

} // namespace Corvane
