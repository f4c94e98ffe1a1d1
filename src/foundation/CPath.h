#pragma once
// A path builder: a path taken apart into directory, name and extension and put together
// again, and the well-known folders of the system by kind. Paths use '/'; a '\' given in
// a text is taken as a separator too and stored as '/'.

#include "foundation/stdstr.h"

class CPath {
public:
    // Folder kinds. Only the program's and the temporary folder are asked for by the
    // application; the others answer the nearest Linux folder (see folder()).
    enum FolderKind {
        CurrentDirectory = 0,
        OperatingSystemFolder = 1,
        SystemFolder = 2,
        DriversFolder = 3,
        SystemFolderParent = 4,
        ModuleFolder = 5,
        TempFolder = 6,
        ProgramFilesFolder = 7,
        CommonFilesFolder = 8,
        MediaFolder = 10,
        DeviceFolder = 11,
    };

    CPath() = default;
    CPath(const stdstr& text);
    CPath(const char16_t* text);
    // The folder of `kind`; empty for a kind that is not known.
    explicit CPath(int kind);
    // The folder of `kind` with `fileName` in it.
    CPath(int kind, const stdstr& fileName);
    CPath(const CPath&) = default;
    CPath& operator=(const CPath&) = default;
    CPath& operator=(const stdstr& text);
    virtual ~CPath() = default;

    const char16_t* c_str() const { return m_path.c_str(); }
    const stdstr& path() const { return m_path; }
    bool empty() const { return m_path.empty(); }
    // True unless the path starts at the root.
    bool isRelative() const;

    // Everything up to and with the last '/' ("/usr/lib/"); empty when there is none.
    stdstr getDirectory() const;
    // The file name without its extension ("libc" of "/usr/lib/libc.so").
    stdstr getName() const;
    // From the last '.' of the file name on, with the dot (".so"); empty when there is none.
    stdstr getExtension() const;
    // The file name with its extension.
    stdstr getFileName() const;

    // Puts a path together from its parts: a '/' goes behind a directory that lacks one,
    // a '.' before an extension that lacks one.
    void join(const stdstr& directory, const stdstr& name, const stdstr& extension);
    void setDirectory(const stdstr& directory);
    void setName(const stdstr& name);
    void setExtension(const stdstr& extension);
    void setFileName(const stdstr& fileName);
    // Takes the path as a folder and adds `folder` below it.
    void appendFolder(const stdstr& folder);

    // The folder of `kind` as text; empty for a kind that is not known.
    static stdstr folder(int kind);

private:
    // Where the file name starts: behind the last '/'.
    std::size_t fileNameStart() const;
    // Where the extension starts inside the file name, or npos.
    std::size_t extensionStart() const;

    // No folder search is offered: nothing in the system lists a folder through a path
    // object, so the path is the only state.
    stdstr m_path;
};
