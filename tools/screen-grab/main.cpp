// qg-screen-grab <file.png>: writes a picture of the primary screen of $DISPLAY.
//
// The demo runs on a virtual X server with no compositor, so grabbing the root window is
// what a user would see on that screen.

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: qg-screen-grab <file.png>\n");
        return 2;
    }
    QGuiApplication application(argc, argv);
    QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        std::fprintf(stderr, "qg-screen-grab: no screen\n");
        return 1;
    }
    const QPixmap picture = screen->grabWindow(0);
    if (picture.isNull() || !picture.save(QString::fromLocal8Bit(argv[1]), "PNG")) {
        std::fprintf(stderr, "qg-screen-grab: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
