#include "foundation/FileString.h"

#include "foundation/BaseException.h"
#include "foundation/ByteArray.h"
#include "foundation/CFile.h"
#include "foundation/ErrorKeys.h"
#include "foundation/Unicode.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <limits>
#include <string>
#include <string_view>

namespace {

constexpr const char16_t* SourceFile = u"FileString.cpp";
// The opening path names the saving function in its messages: the class has always
// reported it so, and the logs people compare against read that way.
constexpr const char16_t* SaveFunction = u"FileString::saveFile()";
constexpr const char16_t* OpenFunction = u"FileString::openFile()";
constexpr unsigned Utf8CodePage = 65001;

[[noreturn]] void ThrowFileError(int line, const stdstr& key, const stdstr& path, int error) {
    throw BaseException(SourceFile, line, -1, SaveFunction, MessageTemplates::KeyWith2Params, key,
                        path, GetOSErrorText(error));
}

// Opens `path` for writing, emptying or creating it. Asking for an existing file to be
// truncated and, failing that, for a new one comes down to one call here.
void OpenForSaving(CFile& file, const stdstr& path) {
    errno = ENOENT; // what an unusable (empty) path reports
    if (!file.open(path.c_str(), CFile::modeWrite | CFile::modeCreate))
        ThrowFileError(__LINE__, ErrorKeys::QGOpenFile, path, errno);
}

void WriteOrThrow(CFile& file, const stdstr& path, const void* data, std::uint32_t size) {
    if (!file.write(data, size)) {
        const int error = errno;
        file.close();
        ThrowFileError(__LINE__, ErrorKeys::QGOpenFile, path, error);
    }
}

} // namespace

bool FileString::openFile(const stdstr& path, bool createIfMissing, std::int64_t maxBytes) {
    m_path = path;
    unsigned flags = CFile::modeRead;
    if (createIfMissing)
        flags |= CFile::modeCreate | CFile::modeNoTruncate;
    CFile file;
    errno = ENOENT; // what an unusable (empty) path reports
    if (!file.open(path.c_str(), flags))
        ThrowFileError(__LINE__, ErrorKeys::QGOpenFile, path, errno);

    std::int64_t toRead = file.getLength();
    if (toRead < 0) {
        const int error = errno;
        file.close();
        ThrowFileError(__LINE__, ErrorKeys::QGReadFile, path, error);
    }
    if (maxBytes >= 0 && maxBytes < toRead)
        toRead = maxBytes;
    if (toRead == 0) {
        file.close();
        return true;
    }
    // The byte buffer counts in 32 bits; a larger file cannot be held as one text.
    if (toRead > std::numeric_limits<std::uint32_t>::max()) {
        file.close();
        ThrowFileError(__LINE__, ErrorKeys::QGReadFile, path, EFBIG);
    }

    ByteArray bytes(static_cast<std::uint32_t>(toRead), 0);
    errno = 0;
    const std::uint32_t got = file.read(bytes.data(), bytes.size());
    if (got == 0) {
        const int error = errno;
        file.close();
        if (error == 0) // the file was emptied since its size was read: nothing to take
            return true;
        ThrowFileError(__LINE__, ErrorKeys::QGReadFile, path, error);
    }
    if (got < bytes.size()) // it shrank meanwhile: take what is there
        bytes.resize(got);

    const std::uint8_t* data = bytes.data();
    const std::uint32_t size = bytes.size();
    if (size >= 2 && data[0] == 0xFF && data[1] == 0xFE) {
        m_isUnicode = true;
        const std::uint32_t count = (size - 2) / 2;
        stdstr text;
        text.resize(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint8_t* pair = data + 2 + 2 * i;
            text[i] = static_cast<char16_t>(pair[0] | (pair[1] << 8));
        }
        m_text = std::move(text);
    } else {
        std::uint32_t skip = 0;
        if (size >= 3 && data[0] == 0xEF && data[1] == 0xBB && data[2] == 0xBF)
            skip = 3;
        m_isUnicode = false;
        // Every byte is taken as UTF-8, whatever it is: bad sequences become U+FFFD and a
        // zero byte does not end the text.
        try {
            stdstr text;
            Corvane::Unicode::appendUtf16(
                text, std::string_view(reinterpret_cast<const char*>(data) + skip, size - skip));
            m_text = std::move(text);
        } catch (const std::exception&) {
            file.close();
            throw BaseException(SourceFile, __LINE__, ENOMEM, OpenFunction,
                                MessageTemplates::KeyWith2Params, ErrorKeys::QGFuncFailed,
                                u"MultiByteToWideChar", GetOSErrorText(ENOMEM));
        }
    }
    file.close();
    return true;
}

bool FileString::createFile(const stdstr& path) {
    CFile file;
    errno = ENOENT; // what an unusable (empty) path reports
    if (!file.open(path.c_str(), CFile::modeRead | CFile::modeCreate))
        ThrowFileError(__LINE__, ErrorKeys::QGOpenFile, path, errno);
    file.close();
    m_path = path;
    return true;
}

bool FileString::saveFile(const stdstr& path, unsigned codePage) {
    const stdstr& target = path.empty() ? m_path : path;
    if (target.empty())
        return false;
    CFile file;
    OpenForSaving(file, target);
    std::string bytes;
    try {
        bytes = stdstr::fromUNICODE(m_text, codePage);
    } catch (...) {
        file.close();
        throw;
    }
    // As a terminated narrow string: the first zero byte ends what is written.
    const std::size_t length = std::strlen(bytes.c_str());
    WriteOrThrow(file, target, bytes.data(), static_cast<std::uint32_t>(length));
    file.close();
    return true;
}

bool FileString::saveFile(const stdstr& path) {
    if (!m_isUnicode)
        return saveFile(path, Utf8CodePage);
    const stdstr& target = path.empty() ? m_path : path;
    if (target.empty())
        return false;
    CFile file;
    OpenForSaving(file, target);
    static constexpr std::uint8_t mark[2] = {0xFF, 0xFE};
    WriteOrThrow(file, target, mark, sizeof mark);
    std::string bytes;
    bytes.reserve(m_text.size() * 2);
    for (const char16_t c : m_text) {
        bytes.push_back(static_cast<char>(c & 0xFF));
        bytes.push_back(static_cast<char>(c >> 8));
    }
    WriteOrThrow(file, target, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    file.close();
    return true;
}

bool FileString::getLine(stdstr& text) {
    const std::size_t length = m_text.size();
    if (m_readPosition == length)
        return false;
    if (m_readPosition != 0 && m_readPosition > length)
        return false;
    const std::size_t lineFeed = m_text.find(u'\n', m_readPosition);
    if (lineFeed == stdstr::npos) {
        text = m_text.substr(m_readPosition);
        m_readPosition = static_cast<std::uint32_t>(length);
        return true;
    }
    std::size_t end = lineFeed;
    if (end > m_readPosition && m_text[end - 1] == u'\r')
        --end;
    text = m_text.substr(m_readPosition, end - m_readPosition);
    m_readPosition = static_cast<std::uint32_t>(lineFeed + 1);
    return true;
}

void FileString::setText(const stdstr& text) {
    m_text = text;
    m_readPosition = 0;
}

void FileString::appendText(const stdstr& text) {
    m_text += text;
}
