#include "toolkit/ResourceStore.h"

#include "toolkit/CanberraSoundPlayer.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QMovie>
#include <QRegularExpression>

#include <map>
#include <mutex>

// The generated registration function lives in the global namespace.
static void InitArtworkResources() {
    Q_INIT_RESOURCE(qg_artwork);
}

namespace {

SoundPlayer* g_soundPlayer = nullptr;

qreal EffectiveRatio(qreal devicePixelRatio) {
    if (devicePixelRatio > 0)
        return devicePixelRatio;
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr
               ? qGuiApp->devicePixelRatio()
               : 1.0;
}

QString ResourcePath(const char* folder, const QString& file) {
    return QStringLiteral("%1/%2/%3")
        .arg(QLatin1String(ResourceStore::Root), QLatin1String(folder), file);
}

// Cached by name and ratio class, as the skin asks for the same nine pieces on every paint.
// Pictures are GUI-thread objects, and so is this cache.
QHash<QString, QPixmap>& BitmapCache() {
    static QHash<QString, QPixmap> cache;
    return cache;
}

QPixmap LoadBitmap(const QString& name, qreal devicePixelRatio) {
    ResourceStore::EnsureRegistered();
    const bool wantDouble = EffectiveRatio(devicePixelRatio) > 1.0;
    const QString key = name + (wantDouble ? QStringLiteral("@2x") : QString());
    auto& cache = BitmapCache();
    const auto found = cache.constFind(key);
    if (found != cache.constEnd())
        return found.value();

    QPixmap pixmap;
    if (wantDouble) {
        const QString doublePath = ResourcePath("bitmaps", name + QStringLiteral("@2x.png"));
        if (QFile::exists(doublePath) && pixmap.load(doublePath))
            pixmap.setDevicePixelRatio(2.0);
    }
    if (pixmap.isNull()) {
        const QString path = ResourceStore::BitmapPath(name);
        if (QFile::exists(path))
            pixmap.load(path);
    }
    cache.insert(key, pixmap);
    return pixmap;
}

} // namespace

void ResourceStore::EnsureRegistered() {
    static std::once_flag once;
    std::call_once(once, InitArtworkResources);
}

QString ResourceStore::BitmapPath(const QString& name) {
    return ResourcePath("bitmaps", name + QStringLiteral(".png"));
}

QString ResourceStore::SoundPath(int id) {
    return ResourcePath("sounds", QString::number(id) + QStringLiteral(".wav"));
}

QPixmap ResourceStore::Bitmap(int id, qreal devicePixelRatio) {
    if (id <= 0)
        return {};
    return LoadBitmap(QString::number(id), devicePixelRatio);
}

QPixmap ResourceStore::Bitmap(const QString& name, qreal devicePixelRatio) {
    if (name.isEmpty() || name.contains(QLatin1Char('/')))
        return {};
    return LoadBitmap(name, devicePixelRatio);
}

QSize ResourceStore::BitmapSize(int id) {
    const QPixmap pixmap = Bitmap(id, 1.0);
    return pixmap.isNull() ? QSize() : pixmap.size();
}

QIcon ResourceStore::Icon(int id) {
    EnsureRegistered();
    static QHash<int, QIcon> cache;
    const auto found = cache.constFind(id);
    if (found != cache.constEnd())
        return found.value();

    QIcon icon;
    const QDir folder(ResourcePath("icons", QString()));
    const QRegularExpression pattern(
        QStringLiteral("^%1(@2x|-(\\d+))?\\.png$").arg(QString::number(id)));
    // The drawings for an exact size come first: a host that asks for 16 or 22 pixels
    // must get the picture drawn for that size, not the base one scaled.
    std::map<int, QString> exact;
    QStringList others;
    for (const QString& file : folder.entryList(QDir::Files, QDir::Name)) {
        const auto match = pattern.match(file);
        if (!match.hasMatch())
            continue;
        if (match.capturedLength(2) > 0)
            exact.emplace(match.captured(2).toInt(), folder.filePath(file));
        else
            others.append(folder.filePath(file));
    }
    for (const auto& [size, path] : exact)
        icon.addFile(path, QSize(size, size));
    for (const QString& path : others) {
        const QPixmap pixmap(path);
        if (!pixmap.isNull() && exact.count(pixmap.width()) == 0)
            icon.addPixmap(pixmap);
    }
    cache.insert(id, icon);
    return icon;
}

QString ResourceStore::MoviePath(int id, qreal devicePixelRatio) {
    EnsureRegistered();
    if (EffectiveRatio(devicePixelRatio) > 1.0) {
        const QString doublePath = ResourcePath("animations", QString::number(id) + "@2x.gif");
        if (QFile::exists(doublePath))
            return doublePath;
    }
    const QString path = ResourcePath("animations", QString::number(id) + ".gif");
    return QFile::exists(path) ? path : QString();
}

std::unique_ptr<QMovie> ResourceStore::Movie(int id, qreal devicePixelRatio) {
    const QString path = MoviePath(id, devicePixelRatio);
    if (path.isEmpty())
        return nullptr;
    auto movie = std::make_unique<QMovie>(path);
    if (!movie->isValid())
        return nullptr;
    return movie;
}

QByteArray ResourceStore::SoundData(int id) {
    EnsureRegistered();
    QFile file(SoundPath(id));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool ResourceStore::PlaySound(int id) {
    if (g_soundPlayer != nullptr)
        return g_soundPlayer->Play(id);
    static CanberraSoundPlayer desktopPlayer;
    return desktopPlayer.Play(id);
}

SoundPlayer* ResourceStore::SetSoundPlayer(SoundPlayer* player) {
    SoundPlayer* previous = g_soundPlayer;
    g_soundPlayer = player;
    return previous;
}
