#pragma once
// Corvane::Application: the running program's own file: its full path (from
// /proc/self/exe) and its file name. Both enquiries throw Corvane::BaseException when
// there is nothing to tell, as the program cannot name itself otherwise.

#include <string>

namespace Corvane {

class Application {
public:
    // Reads the path of the running program.
    Application();
    // A path already known (for instance a library's, from dladdr).
    explicit Application(std::u16string fullPath);
    virtual ~Application();

    const std::u16string& fullPath() const { return m_fullPath; }
    // The part of the path behind its last '/'.
    std::u16string ExeName() const;

private:
    std::u16string m_fullPath;
};

} // namespace Corvane
