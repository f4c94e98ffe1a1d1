#pragma once
// Event sounds are compiled into the program, but the sound server plays files: each
// sound is written once per session to a private folder of the user (the runtime folder,
// else the temporary one) and played from there.

#include <QHash>
#include <QString>

class SoundFileCache {
public:
    // The folder is made on first use: $XDG_RUNTIME_DIR/quillgate-sounds, or
    // $TMPDIR (else /tmp)/quillgate-sounds-<uid>, mode 0700 and owned by the user.
    SoundFileCache() = default;
    explicit SoundFileCache(QString folder) : m_folder(std::move(folder)) {}

    // The file of sound `id`, written if it is not there yet; empty when the sound does
    // not exist or cannot be written.
    QString FileFor(int id);

    // The folder that FileFor writes to, made if needed; empty if it cannot be made safely.
    QString Folder();

    static QString DefaultFolder();

private:
    QString m_folder;
    bool m_folderChecked = false;
    QHash<int, QString> m_files;
};
