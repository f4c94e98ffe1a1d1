#include "support/SandboxRoot.h"

#include "foundation/SystemPaths.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace TestSupport {

SandboxRoot::SandboxRoot() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/qg-test-XXXXXX";
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("mkdtemp failed for " + pattern);
    m_path = pattern;
    for (const char* sub : {"home", "home/.config", "runtime", "tmp", "run", "var/lib"})
        std::filesystem::create_directories(m_path + "/" + sub);
    std::filesystem::permissions(m_path + "/runtime", std::filesystem::perms::owner_all);
    setEnv("QUILLGATE_ROOT", m_path);
    setEnv("HOME", m_path + "/home");
    setEnv("XDG_CONFIG_HOME", m_path + "/home/.config");
    setEnv("XDG_RUNTIME_DIR", m_path + "/runtime");
    setEnv("TMPDIR", m_path + "/tmp");
}

SandboxRoot::~SandboxRoot() {
    for (const auto& [name, value] : m_saved) {
        if (value)
            ::setenv(name.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name.c_str());
    }
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void SandboxRoot::setEnv(const char* name, const std::string& value) {
    if (!m_saved.count(name)) {
        const char* old = std::getenv(name);
        m_saved[name] = old ? std::optional<std::string>(old) : std::nullopt;
    }
    ::setenv(name, value.c_str(), 1);
}

void SandboxRoot::writeFile(const std::string& relative, const std::string& content) const {
    const std::filesystem::path target = file(relative);
    std::filesystem::create_directories(target.parent_path());
    std::ofstream out(target, std::ios::binary | std::ios::trunc);
    out << content;
}

std::string SandboxRoot::readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

} // namespace TestSupport
