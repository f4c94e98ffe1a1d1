#include "foundation/CPath.h"

#include "foundation/SystemPaths.h"

#include <climits>
#include <unistd.h>

namespace {

stdstr WithSlashes(stdstr text) {
    text.replaceChar(u'\\', u'/');
    return text;
}

bool EndsWithSlash(const stdstr& text) {
    return !text.empty() && text.back() == u'/';
}

// The system folders of another platform mapped to the Linux folders that play their
// part; none of them is below the sandbox root, since they are the machine's, not ours.
constexpr const char16_t* UsrFolder = u"/usr";
constexpr const char16_t* SystemLibraryFolder = u"/usr/lib";
constexpr const char16_t* ProgramsFolder = u"/opt";
constexpr const char16_t* SharedFilesFolder = u"/usr/share";
constexpr const char16_t* SoundsFolder = u"/usr/share/sounds";
constexpr const char16_t* DeviceRulesFolder = u"/usr/lib/udev";

stdstr WorkingDirectory() {
    char buffer[PATH_MAX];
    if (!::getcwd(buffer, sizeof buffer))
        return {};
    return stdstr::toTString(buffer);
}

} // namespace

CPath::CPath(const stdstr& text) : m_path(WithSlashes(text)) {}

CPath::CPath(const char16_t* text) : m_path(WithSlashes(stdstr(text))) {}

CPath::CPath(int kind) : m_path(folder(kind)) {}

CPath::CPath(int kind, const stdstr& fileName) : m_path(folder(kind)) {
    const stdstr name = WithSlashes(fileName);
    if (!m_path.empty() && !EndsWithSlash(m_path))
        m_path += u'/';
    m_path += name;
}

CPath& CPath::operator=(const stdstr& text) {
    m_path = WithSlashes(text);
    return *this;
}

bool CPath::isRelative() const {
    return m_path.empty() || m_path.front() != u'/';
}

std::size_t CPath::fileNameStart() const {
    const std::size_t slash = m_path.rfind(u'/');
    return slash == stdstr::npos ? 0 : slash + 1;
}

std::size_t CPath::extensionStart() const {
    const std::size_t dot = m_path.rfind(u'.');
    return dot == stdstr::npos || dot < fileNameStart() ? stdstr::npos : dot;
}

stdstr CPath::getDirectory() const {
    return m_path.substr(0, fileNameStart());
}

stdstr CPath::getName() const {
    const std::size_t start = fileNameStart();
    const std::size_t dot = extensionStart();
    return m_path.substr(start, dot == stdstr::npos ? stdstr::npos : dot - start);
}

stdstr CPath::getExtension() const {
    const std::size_t dot = extensionStart();
    return dot == stdstr::npos ? stdstr() : stdstr(m_path.substr(dot));
}

stdstr CPath::getFileName() const {
    return m_path.substr(fileNameStart());
}

void CPath::join(const stdstr& directory, const stdstr& name, const stdstr& extension) {
    stdstr path = WithSlashes(directory);
    if (!path.empty() && !EndsWithSlash(path))
        path += u'/';
    path += WithSlashes(name);
    if (!extension.empty() && extension.front() != u'.')
        path += u'.';
    path += WithSlashes(extension);
    m_path = std::move(path);
}

void CPath::setDirectory(const stdstr& directory) {
    join(directory, getName(), getExtension());
}

void CPath::setName(const stdstr& name) {
    join(getDirectory(), name, getExtension());
}

void CPath::setExtension(const stdstr& extension) {
    join(getDirectory(), getName(), extension);
}

void CPath::setFileName(const stdstr& fileName) {
    m_path = getDirectory() + WithSlashes(fileName);
}

void CPath::appendFolder(const stdstr& folder) {
    stdstr name = WithSlashes(folder);
    while (!name.empty() && name.front() == u'/')
        name.erase(0, 1);
    if (!m_path.empty() && !EndsWithSlash(m_path))
        m_path += u'/';
    m_path += name;
}

stdstr CPath::folder(int kind) {
    switch (kind) {
    case CurrentDirectory:
        return WorkingDirectory();
    case OperatingSystemFolder:
        return UsrFolder;
    case SystemFolder:
        return SystemLibraryFolder;
    case DriversFolder: {
        // The system folder and its drivers: the kernel's modules.
        CPath drivers(SystemLibraryFolder);
        drivers.appendFolder(u"modules");
        return drivers.path();
    }
    case SystemFolderParent:
        // The system folder without its last part, taken apart as a file path is: the
        // directory keeps its closing '/'.
        return CPath(SystemLibraryFolder).getDirectory();
    case ModuleFolder:
        return stdstr::toTString(SystemPaths::ProgramFolder());
    case TempFolder:
        // With its closing '/', as the temporary-folder enquiry answers.
        return stdstr::toTString(SystemPaths::TempFolder());
    case ProgramFilesFolder:
        return ProgramsFolder;
    case CommonFilesFolder:
        return SharedFilesFolder;
    case MediaFolder:
        return SoundsFolder;
    case DeviceFolder:
        return DeviceRulesFolder;
    default:
        return {};
    }
}
