#pragma once
// The main window's message map: every message that reaches the window (the private ones of
// the program, the window system's that the window answers itself, commands and timers)
// is offered to the entries from top to bottom. An entry whose handler reports it handled
// ends the walk and gives the answer; one that leaves it clear lets the walk go on, which
// is how a size change reaches both the window's outline and the resize chain, and a timer
// both the window's duties and the tray's animation. A message that no entry takes goes to
// the default handling. The order of the entries is the program's order of precedence.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class MainDlgMessageMap {
public:
    using WParam = std::uintptr_t;
    using LParam = std::intptr_t;
    using Result = std::intptr_t;

    // Numbers of the window system's messages that the map names.
    static constexpr int WM_SIZE = 0x0005;
    static constexpr int WM_PAINT = 0x000F;
    static constexpr int WM_CLOSE = 0x0010;
    static constexpr int WM_QUERYENDSESSION = 0x0011;
    static constexpr int WM_ERASEBKGND = 0x0014;
    static constexpr int WM_ENDSESSION = 0x0016;
    static constexpr int WM_SETCURSOR = 0x0020;
    static constexpr int WM_GETMINMAXINFO = 0x0024;
    static constexpr int WM_DRAWITEM = 0x002B;
    static constexpr int WM_MEASUREITEM = 0x002C;
    static constexpr int WM_DELETEITEM = 0x002D;
    static constexpr int WM_VKEYTOITEM = 0x002E;
    static constexpr int WM_CHARTOITEM = 0x002F;
    static constexpr int WM_COMPAREITEM = 0x0039;
    static constexpr int WM_NOTIFY = 0x004E;
    static constexpr int WM_NCCALCSIZE = 0x0083;
    static constexpr int WM_NCHITTEST = 0x0084;
    static constexpr int WM_NCACTIVATE = 0x0086;
    static constexpr int WM_NCLBUTTONDBLCLK = 0x00A3;
    static constexpr int WM_NCRBUTTONUP = 0x00A5;
    static constexpr int WM_INITDIALOG = 0x0110;
    static constexpr int WM_COMMAND = 0x0111;
    static constexpr int WM_TIMER = 0x0113;
    static constexpr int WM_HSCROLL = 0x0114;
    static constexpr int WM_VSCROLL = 0x0115;
    static constexpr int WM_CTLCOLORMSGBOX = 0x0132;
    static constexpr int WM_CTLCOLOREDIT = 0x0133;
    static constexpr int WM_CTLCOLORLISTBOX = 0x0134;
    static constexpr int WM_CTLCOLORBTN = 0x0135;
    static constexpr int WM_CTLCOLORDLG = 0x0136;
    static constexpr int WM_CTLCOLORSCROLLBAR = 0x0137;
    static constexpr int WM_CTLCOLORSTATIC = 0x0138;
    static constexpr int WM_LBUTTONDOWN = 0x0201;
    static constexpr int WM_PARENTNOTIFY = 0x0210;
    static constexpr int WM_PRINTCLIENT = 0x0318;

    // A command's wParam: the control or menu id in the low word, the notification above.
    static constexpr WParam MakeCommand(int id, int notification = 0) {
        return (static_cast<WParam>(static_cast<std::uint16_t>(notification)) << 16) |
               static_cast<std::uint16_t>(id);
    }
    static constexpr int CommandId(WParam wParam) { return static_cast<int>(wParam & 0xFFFF); }
    static constexpr int CommandCode(WParam wParam) {
        return static_cast<int>((wParam >> 16) & 0xFFFF);
    }

    // An lParam that carries two 16-bit halves (a point, a size), and the halves again.
    static constexpr LParam MakeLParam(int low, int high) {
        return static_cast<LParam>(
            static_cast<std::uint32_t>(static_cast<std::uint16_t>(low)) |
            (static_cast<std::uint32_t>(static_cast<std::uint16_t>(high)) << 16));
    }
    static constexpr int SignedLow(LParam lParam) {
        return static_cast<std::int16_t>(static_cast<std::uint32_t>(lParam) & 0xFFFF);
    }
    static constexpr int SignedHigh(LParam lParam) {
        return static_cast<std::int16_t>((static_cast<std::uint32_t>(lParam) >> 16) & 0xFFFF);
    }
    static constexpr int UnsignedLow(LParam lParam) {
        return static_cast<int>(static_cast<std::uint32_t>(lParam) & 0xFFFF);
    }
    static constexpr int UnsignedHigh(LParam lParam) {
        return static_cast<int>((static_cast<std::uint32_t>(lParam) >> 16) & 0xFFFF);
    }

    // One handler per behaviour; the rows of the map name them.
    enum class Handler {
        InitDialog,
        HitTest,
        SystemMenu,
        SwallowCaptionDoubleClick,
        NcCalcSize,
        NcActivate,
        WindowShape,
        Colours,
        RunUpdate,     // 1037
        TrayAnimate,   // 1054
        RefreshStatus, // 1058
        Close,
        ExitQuiet, // 1048
        QueryEndSession,
        EndSession,
        ServiceMessage, // 1060
        ConfigChanged,  // 1061
        ButtonEnter,    // 1480
        ButtonLeave,    // 1481
        SetInfo,        // 1051
        GetInfo,        // 1052
        Help,           // 1280
        Timers,
        Language,    // 1055
        ShowSummary, // 1041
        FilterState, // 1057
        Exit,        // 1059
        RpcStatus,   // 1062
        WindowButtons,
        MenuCommands,
        SectionButtons,
        HandCursor,
        HomePageClick,
        ChainDialogResize,
        ChainTray,
        ChainOffscreenDraw,
        ReflectNotifications,
    };

    enum class Match {
        Messages,   // any of the listed message numbers
        CommandIds, // WM_COMMAND, notification 0, one of the listed ids
        AnyCommand, // WM_COMMAND, notification 0, any id
    };

    struct Entry {
        Handler handler;
        Match match;
        std::vector<int> values;
    };

    // What the entries call. Answers whether the message is handled (the walk ends) and
    // sets `result` to the window's answer.
    class Target {
    public:
        virtual bool OnMessage(Handler handler, int message, WParam wParam, LParam lParam,
                               Result& result) = 0;

    protected:
        Target() = default;
        Target(const Target&) = default;
        Target& operator=(const Target&) = default;
        ~Target() = default;
    };

    // The entries, top to bottom.
    static std::span<const Entry> Entries();

    // The handlers that `message` is offered to, in order, if none of them ends the walk.
    static std::vector<Handler> Candidates(int message, WParam wParam);

    // Walks the map. The answer of the handler that took the message, or nothing when the
    // message is left to the default handling.
    static std::optional<Result> Dispatch(int message, WParam wParam, LParam lParam,
                                          Target& target);

private:
    static bool Matches(const Entry& entry, int message, WParam wParam);
};
