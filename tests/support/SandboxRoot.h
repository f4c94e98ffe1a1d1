#pragma once
// A throw-away sandbox root for one test: a fresh folder that QUILLGATE_ROOT, HOME,
// XDG_CONFIG_HOME, XDG_RUNTIME_DIR and TMPDIR point into while the object lives, so that
// nothing of the machine is read or written. The environment is restored and the folder
// removed at the end.

#include <map>
#include <optional>
#include <string>

namespace TestSupport {

class SandboxRoot {
public:
    SandboxRoot();
    ~SandboxRoot();
    SandboxRoot(const SandboxRoot&) = delete;
    SandboxRoot& operator=(const SandboxRoot&) = delete;

    const std::string& path() const { return m_path; }
    // A path below the root, without a leading '/': "var/lib".
    std::string file(const std::string& relative) const { return m_path + "/" + relative; }

    // Writes `content` to a file below the root, making its folders.
    void writeFile(const std::string& relative, const std::string& content) const;
    static std::string readFile(const std::string& path);

private:
    void setEnv(const char* name, const std::string& value);

    std::string m_path;
    std::map<std::string, std::optional<std::string>> m_saved;
};

} // namespace TestSupport
