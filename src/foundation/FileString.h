#pragma once
// A whole text file in memory: loads it, recognising its encoding by the byte order mark
// (FF FE: UTF-16LE; EF BB BF or none: UTF-8), hands it out line by line, and saves it
// again. Failures to open, read or write throw BaseException, always after the file has
// been closed.

#include "foundation/stdstr.h"

#include <cstdint>

class FileString {
public:
    // The maxBytes of openFile that reads the whole file.
    static constexpr std::int64_t WholeFile = -1;

    FileString() = default;
    virtual ~FileString() = default;

    // Loads the file, or at most `maxBytes` of it (WholeFile: all of it). An empty file
    // (or a maxBytes of 0) leaves the text and the encoding as they were. The read
    // position is not moved. Throws when the file cannot be opened or read.
    virtual bool openFile(const stdstr& path, bool createIfMissing = false,
                          std::int64_t maxBytes = WholeFile);
    // Creates the file, or empties an existing one, and remembers its path.
    virtual bool createFile(const stdstr& path);
    // Writes the text converted to `codePage` (65001: UTF-8), without a byte order mark,
    // up to the first zero byte of the conversion. An empty `path` means the path of the
    // last opened or created file; false when there is none.
    virtual bool saveFile(const stdstr& path, unsigned codePage);
    // As above in UTF-8, unless the text came from a UTF-16 file: then the mark FF FE and
    // the text as UTF-16LE.
    virtual bool saveFile(const stdstr& path);
    // The next line, without its line feed and a carriage return directly before it;
    // false when no line is left.
    virtual bool getLine(stdstr& text);
    virtual stdstr& getText() { return m_text; }
    // Replaces the text and starts reading lines from its beginning.
    virtual void setText(const stdstr& text);
    virtual void appendText(const stdstr& text);

    bool isUnicode() const { return m_isUnicode; }
    void setUnicode(bool unicode) { m_isUnicode = unicode; }
    const stdstr& path() const { return m_path; }

private:
    bool writeFile(const stdstr& path, const void* mark, std::uint32_t markSize, const void* data,
                   std::uint32_t size);

    bool m_isUnicode = false;
    std::uint32_t m_readPosition = 0;
    stdstr m_text;
    stdstr m_path;
};
