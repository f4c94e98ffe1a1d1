#pragma once
// The main window's dialog 129 as data: its controls in dialog units, the look of each
// bitmap button, the texts that the language step gives them, the help menu's items, the
// large-font moves of the top row, the home-page area and the outline. The window builds
// itself from these tables; the tests read them to check what it built.

#include <QRect>
#include <QSize>

#include <array>
#include <cstdint>
#include <span>

class MainDlgLayout {
public:
    // Control ids.
    static constexpr int StatusButton = 1000;
    static constexpr int AddressListButton = 1001;
    static constexpr int AdvancedButton = 1002; // hidden from the start
    static constexpr int SettingsButton = 1003;
    static constexpr int MinimiseButton = 1005;
    static constexpr int MaximiseButton = 1006;
    static constexpr int CloseButton = 1007;
    static constexpr int UpdateButton = 1008;
    static constexpr int HelpButton = 1009;
    static constexpr int HiddenButton = 1010; // always hidden
    static constexpr int RestoreButton = 1011;
    static constexpr int HintLabel = 1015;
    static constexpr int UpdatePicture = 1016;
    static constexpr int AboutButton = 1017;

    // The template's size in dialog units and its title.
    static constexpr int DialogWidth = 521;
    static constexpr int DialogHeight = 276;
    static constexpr std::uint32_t TitleString = 128;
    // The picture of control 1016.
    static constexpr int UpdatePictureBitmap = 201;

    enum class Kind { Button, Label, Picture };
    struct Control {
        int id;
        QRect units; // x, y, width, height in dialog units
        Kind kind;
        bool visible; // shown when the dialog is made
    };
    // In the template's order.
    static std::span<const Control> Controls();
    static const Control* Find(int id);

    // The members of the navigation group, in the order they are added.
    static constexpr std::array<int, 4> GroupButtons = {StatusButton, AddressListButton,
                                                        SettingsButton, AboutButton};

    struct ButtonLook {
        // Normal, pressed, hover, disabled, focused, focused-and-pressed; 0: none.
        std::array<std::uint16_t, 6> bitmaps;
        // Normal, pressed, hover, disabled, as 0x00BBGGRR; 0 keeps the default colour.
        std::array<std::uint32_t, 4> colours;
        bool soundOn;
        std::uint16_t soundId;
        bool pushMode;
    };
    // Null for an id that is not a bitmap button of the window.
    static const ButtonLook* LookOf(int id);

    // Tool tips of the language step, in its order.
    struct ToolTip {
        int id;
        std::uint32_t stringId;
    };
    static std::span<const ToolTip> ToolTips();

    // Captions of the language step, in its order. After a caption is set the button is
    // hidden and shown again so that it repaints; those marked `onlyIfVisible` only when
    // they are visible at the time.
    enum class CaptionFont { Section, Link };
    struct Caption {
        int id;
        std::uint32_t stringId;
        CaptionFont font;
        int align;
        int xOffset;
        bool onlyIfVisible;
        std::uint32_t toolTipId; // 0: none
    };
    static std::span<const Caption> Captions();

    // The help menu's items: command and text.
    struct MenuItem {
        int command;
        std::uint32_t stringId;
    };
    static std::span<const MenuItem> HelpMenuItems();

    // The large-font layout: each control of the top row moves up and right and changes
    // width by so many pixels, in this order.
    struct HighDpiStep {
        int id;
        int up;
        int right;
        int widthDelta;
    };
    static std::span<const HighDpiStep> HighDpiSteps();
    static QRect ApplyHighDpiStep(const QRect& geometry, const HighDpiStep& step);

    // The area at the bottom left, over the skin's product mark, that opens the home page.
    static QRect HomePageArea(const QSize& client);

    // The outline: a rectangle two pixels (SM_CXEDGE, SM_CYEDGE) larger than the client
    // area, with corners on an ellipse of 26 by 26.
    static constexpr int EdgeX = 2;
    static constexpr int EdgeY = 2;
    static constexpr int CornerEllipse = 26;
    static QSize RegionSize(const QSize& client) {
        return QSize(client.width() + EdgeX, client.height() + EdgeY);
    }

    // The hint label's text colour, 0x00BBGGRR.
    static constexpr std::uint32_t HintTextColour = 0xC59B9B;
};
