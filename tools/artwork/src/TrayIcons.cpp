#include "TrayIcons.h"

#include "ArtworkOutput.h"
#include "Emblem.h"

#include <functional>
#include <string>
#include <vector>

namespace artwork::trayicons {

namespace {

void writeIcon(ArtworkOutput& out, int id, int base, const std::vector<int>& exactSizes,
               const std::function<QImage(int)>& render, std::string shows, std::string usedBy) {
    ArtworkEntry entry{Family::Icon,
                       std::to_string(id),
                       {},
                       std::to_string(base) + " x " + std::to_string(base),
                       std::move(shows),
                       std::move(usedBy)};
    const std::string stem = "icons/" + std::to_string(id);
    out.writePng(stem + ".png", render(base));
    entry.files.push_back(stem + ".png");
    out.writePng(stem + "@2x.png", render(base * 2));
    entry.files.push_back(stem + "@2x.png");
    for (int size : exactSizes) {
        const std::string file = stem + "-" + std::to_string(size) + ".png";
        out.writePng(file, render(size));
        entry.files.push_back(file);
    }
    out.add(std::move(entry));
}

} // namespace

void write(ArtworkOutput& out) {
    const std::vector<int> traySizes{16, 22, 24, 32};
    struct Set {
        int firstFrame;
        int offId;
        const char* which;
    };
    // The tray code loads the first set on the Windows 95 family only; a Linux
    // build uses the second. Both sets hold the same pictures.
    const Set sets[] = {
        {218, 238, "first (classic) set"},
        {228, 239, "second set, the one loaded on Linux"},
    };
    for (const auto& set : sets) {
        const std::string user =
            std::string("`TrayIconImpl<CMainDlg>` through `CMainDlg`, ") + set.which;
        for (int frame = 0; frame < 9; ++frame) {
            writeIcon(
                out, set.firstFrame + frame, 16, traySizes,
                [frame](int px) { return renderTrayIcon(px, TrayState::Scanning, frame); },
                "animation frame " + std::to_string(frame + 1) +
                    " of 10: the \"on\" icon with a band of light passing down it",
                user + ": frame " + std::to_string(frame + 1));
        }
        writeIcon(
            out, set.firstFrame + 9, 16, traySizes,
            [](int px) { return renderTrayIcon(px, TrayState::On, 0); },
            "filtering on: white envelope on a teal tile; also frame 10, where the "
            "animation comes to rest",
            user + ": \"on\" icon and frame 10");
        writeIcon(
            out, set.offId, 16, traySizes,
            [](int px) { return renderTrayIcon(px, TrayState::Off, 0); },
            "filtering off: grey tile and envelope, crossed by a red slash",
            user + ": \"off\" icon");
    }
    writeIcon(
        out, 128, 32, {16, 22, 24, 32, 48, 64, 128, 256}, [](int px) { return renderAppIcon(px); },
        "application icon: white envelope on a teal tile with a green check badge "
        "(the badge from 24 pixels up)",
        "`QuillgateGUIRes` (`m_hIconLarge`, `m_hIconSmall`): window icon of `CMainDlg`, "
        "`AboutDlg`, `WelcomeFirstRun`, `WelcomeWiz`, `CReInstallDlg`");
}

} // namespace artwork::trayicons
