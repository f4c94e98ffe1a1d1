#pragma once
// The program's artwork by resource id: bitmaps, icons, the animation and the event
// sounds, compiled into the program with Qt's resource system. A missing id gives a null
// picture or a false answer, never an exception, because windows must cope with a picture
// that did not load just as they cope with one that was never asked for.

#include <QIcon>
#include <QPixmap>
#include <QString>

#include <memory>

class QMovie;
class SoundPlayer;

class ResourceStore {
public:
    // Where the artwork lives inside the resource system (":/qg/bitmaps/208.png").
    static constexpr const char* Root = ":/qg";

    // The bitmap with this id. `devicePixelRatio` 0 means that of the application; above
    // 1 the "@2x" drawing is taken when there is one (and marked with ratio 2, so its
    // deviceIndependentSize() is the size the program lays it out with). Null if missing.
    static QPixmap Bitmap(int id, qreal devicePixelRatio = 0);
    // A named bitmap without a number ("IDB_BMP_TASK_1"), by the same rules.
    static QPixmap Bitmap(const QString& name, qreal devicePixelRatio = 0);
    // The layout size of a bitmap (its 1x size), empty when it is missing.
    static QSize BitmapSize(int id);

    // The icon with all the sizes drawn for it (exact sizes for 16, 22, 24, 32... and the
    // base and "@2x" drawings). Null (isNull()) when missing.
    static QIcon Icon(int id);

    // The resource path of an animation ("@2x" on a high-density screen), empty if missing.
    static QString MoviePath(int id, qreal devicePixelRatio = 0);
    // A movie of that animation, not started, owned by the caller; null if missing. The
    // 1x drawing unless a ratio above 1 is given: the "@2x" frames are twice the size and
    // must be shown with a device pixel ratio of 2 (QLabel::setMovie does not do that).
    static std::unique_ptr<QMovie> Movie(int id, qreal devicePixelRatio = 1.0);

    // The bytes of a WAVE resource; empty if missing.
    static QByteArray SoundData(int id);
    // Starts the sound through the current player, asynchronously. False when it could
    // not be started; silence is never an error for the caller.
    static bool PlaySound(int id);

    // The player that PlaySound uses, by default the desktop's sound server. Tests put a
    // recorder here; the store does not own it. Null restores the default. Returns the
    // player that was set before (null for the default).
    static SoundPlayer* SetSoundPlayer(SoundPlayer* player);

    // Makes sure that the compiled-in resources are registered (idempotent). Every
    // loader above calls it; it is public for code that reads the paths itself.
    static void EnsureRegistered();

    static QString BitmapPath(const QString& name);
    static QString SoundPath(int id);
};
