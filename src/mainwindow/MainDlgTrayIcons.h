#pragma once
// The main window's share of the tray icon: the "on" and "off" icons and its own list of
// the animation's frames. The tray set-up fills them; the window lets go of them when it
// is destroyed.

#include <QIcon>
#include <QList>

struct MainDlgTrayIcons {
    QIcon on;
    QIcon off;
    QList<QIcon> frames;
};
