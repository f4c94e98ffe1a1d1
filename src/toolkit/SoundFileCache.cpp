#include "toolkit/SoundFileCache.h"

#include "toolkit/ResourceStore.h"

#include <QDir>
#include <QSaveFile>

#include <sys/stat.h>
#include <unistd.h>

QString SoundFileCache::DefaultFolder() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QDir(runtime).exists())
        return runtime + QStringLiteral("/quillgate-sounds");
    QString temp = qEnvironmentVariable("TMPDIR");
    if (temp.isEmpty())
        temp = QStringLiteral("/tmp");
    return QStringLiteral("%1/quillgate-sounds-%2").arg(temp).arg(::getuid());
}

QString SoundFileCache::Folder() {
    if (m_folder.isEmpty())
        m_folder = DefaultFolder();
    if (m_folderChecked)
        return m_folder;
    const QByteArray path = QFile::encodeName(m_folder);
    if (::mkdir(path.constData(), 0700) != 0 && errno != EEXIST)
        return {};
    // In a shared temporary folder someone else may have made the name first; a folder
    // that is not ours, or not a folder, is not written into.
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0 || !S_ISDIR(info.st_mode) ||
        info.st_uid != ::getuid())
        return {};
    m_folderChecked = true;
    return m_folder;
}

QString SoundFileCache::FileFor(int id) {
    const auto found = m_files.constFind(id);
    if (found != m_files.constEnd())
        return found.value();

    const QByteArray data = ResourceStore::SoundData(id);
    if (data.isEmpty())
        return {};
    const QString folder = Folder();
    if (folder.isEmpty())
        return {};
    const QString path = QStringLiteral("%1/%2.wav").arg(folder).arg(id);
    // Written whole and renamed into place, so a second copy of the program that plays
    // the same sound never reads a half-written file.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit())
        return {};
    m_files.insert(id, path);
    return path;
}
