#include "mainwindow/MainDlgLayout.h"

#include <algorithm>

namespace {

using Control = MainDlgLayout::Control;
using Kind = MainDlgLayout::Kind;
using ButtonLook = MainDlgLayout::ButtonLook;
using CaptionFont = MainDlgLayout::CaptionFont;

// 1017, 1016 and 1008 are made visible by the window's set-up, 1002 stays hidden until
// something shows it, 1010 is never seen.
constexpr std::array<Control, 14> ControlTable = {{
    {1000, QRect(5, 60, 81, 19), Kind::Button, true},
    {1001, QRect(5, 84, 81, 19), Kind::Button, true},
    {1002, QRect(5, 108, 81, 19), Kind::Button, false},
    {1003, QRect(5, 108, 81, 19), Kind::Button, true},
    {1017, QRect(6, 132, 81, 19), Kind::Button, false},
    {1010, QRect(5, 132, 81, 19), Kind::Button, false},
    {1005, QRect(470, 3, 14, 11), Kind::Button, true},
    {1006, QRect(486, 3, 14, 11), Kind::Button, true},
    {1011, QRect(486, 3, 14, 11), Kind::Button, false},
    {1007, QRect(503, 3, 14, 11), Kind::Button, true},
    {1008, QRect(383, 19, 60, 13), Kind::Button, false},
    {1016, QRect(373, 21, 10, 10), Kind::Picture, false},
    {1009, QRect(481, 19, 40, 13), Kind::Button, true},
    {1015, QRect(2, 174, 83, 90), Kind::Label, false},
}};

constexpr ButtonLook Minimise{{240, 241, 242, 243, 0, 0}, {0, 0, 0, 0}, false, 0, true};
constexpr ButtonLook Maximise{{244, 245, 246, 247, 0, 0}, {0, 0, 0, 0}, false, 0, true};
constexpr ButtonLook Restore{{252, 253, 254, 255, 0, 0}, {0, 0, 0, 0}, false, 0, true};
constexpr ButtonLook Close{{248, 249, 250, 251, 0, 0}, {0, 0, 0, 0}, false, 0, true};
constexpr ButtonLook Navigation{
    {256, 259, 260, 261, 256, 259}, {0, 0xFFFFFF, 9909043, 0xC0C0C0}, false, 206, false};
constexpr ButtonLook TopBar{
    {263, 264, 262, 263, 263, 0}, {0xFFFFFF, 0, 65535, 0xC0C0C0}, false, 206, true};

constexpr std::array<MainDlgLayout::ToolTip, 4> ToolTipTable = {{
    {1005, 130},
    {1006, 131},
    {1011, 143},
    {1007, 144},
}};

// The section captions stand left in the button, clear of the picture's left part; the
// link captions at 10 pixels from the left, as the help link's own offset says.
constexpr int SectionAlign = -1;
constexpr int SectionOffset = 30;
constexpr int LinkAlign = -1;
constexpr int LinkOffset = 10;

constexpr std::array<MainDlgLayout::Caption, 7> CaptionTable = {{
    {1000, 141, CaptionFont::Section, SectionAlign, SectionOffset, false, 0},
    {1001, 132, CaptionFont::Section, SectionAlign, SectionOffset, false, 0},
    {1002, 133, CaptionFont::Section, SectionAlign, SectionOffset, true, 0},
    {1003, 134, CaptionFont::Section, SectionAlign, SectionOffset, false, 0},
    {1017, 142, CaptionFont::Section, SectionAlign, SectionOffset, true, 0},
    {1009, 138, CaptionFont::Link, LinkAlign, LinkOffset, false, 137},
    {1008, 139, CaptionFont::Link, LinkAlign, LinkOffset, true, 0},
}};

constexpr std::array<MainDlgLayout::MenuItem, 4> HelpMenuTable = {{
    {32782, 248},
    {32783, 249},
    {32784, 250},
    {32785, 251},
}};

constexpr std::array<MainDlgLayout::HighDpiStep, 7> HighDpiTable = {{
    {1005, 0, 16, -8},
    {1007, 0, 17, -8},
    {1011, 0, 17, -8},
    {1006, 0, 18, -8},
    {1009, 7, 25, 0},
    {1008, 7, 94, -21},
    {1016, 8, 94, 0},
}};

// The home-page area, from the client area's left and bottom.
constexpr int HomeLeft = 8;
constexpr int HomeRight = 132;
constexpr int HomeAboveBottom = 48;
constexpr int HomeHeight = 36;

} // namespace

std::span<const Control> MainDlgLayout::Controls() {
    return ControlTable;
}

const Control* MainDlgLayout::Find(int id) {
    const auto found = std::find_if(ControlTable.begin(), ControlTable.end(),
                                    [id](const Control& control) { return control.id == id; });
    return found != ControlTable.end() ? &*found : nullptr;
}

const ButtonLook* MainDlgLayout::LookOf(int id) {
    switch (id) {
    case MinimiseButton:
        return &Minimise;
    case MaximiseButton:
        return &Maximise;
    case RestoreButton:
        return &Restore;
    case CloseButton:
        return &Close;
    case StatusButton:
    case AddressListButton:
    case AdvancedButton:
    case SettingsButton:
    case HiddenButton:
    case AboutButton:
        return &Navigation;
    case HelpButton:
    case UpdateButton:
        return &TopBar;
    default:
        return nullptr;
    }
}

std::span<const MainDlgLayout::ToolTip> MainDlgLayout::ToolTips() {
    return ToolTipTable;
}

std::span<const MainDlgLayout::Caption> MainDlgLayout::Captions() {
    return CaptionTable;
}

std::span<const MainDlgLayout::MenuItem> MainDlgLayout::HelpMenuItems() {
    return HelpMenuTable;
}

std::span<const MainDlgLayout::HighDpiStep> MainDlgLayout::HighDpiSteps() {
    return HighDpiTable;
}

QRect MainDlgLayout::ApplyHighDpiStep(const QRect& geometry, const HighDpiStep& step) {
    return QRect(geometry.x() + step.right, geometry.y() - step.up,
                 geometry.width() + step.widthDelta, geometry.height());
}

QRect MainDlgLayout::HomePageArea(const QSize& client) {
    const int top = client.height() - HomeAboveBottom;
    return QRect(HomeLeft, top, HomeRight - HomeLeft, HomeHeight);
}
