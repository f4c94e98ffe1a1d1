// TrayIcons: writes the notification-area icons (on, off and the ten animation
// frames, in both sets the tray code can load) and the application icon, each at
// its base size, twice that, and the exact sizes panels ask for.
#pragma once

namespace artwork {

class ArtworkOutput;

namespace trayicons {

void write(ArtworkOutput& out);

} // namespace trayicons
} // namespace artwork
