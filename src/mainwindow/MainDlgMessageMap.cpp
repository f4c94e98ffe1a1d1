#include "mainwindow/MainDlgMessageMap.h"

#include "mainwindow/PrivateMessages.h"
#include "toolkit/PrivateMessages.h"

#include <algorithm>

namespace {

using Map = MainDlgMessageMap;
using H = Map::Handler;
using M = Map::Match;

const std::vector<Map::Entry>& Table() {
    static const std::vector<Map::Entry> table = {
        {H::InitDialog, M::Messages, {Map::WM_INITDIALOG}},
        {H::HitTest, M::Messages, {Map::WM_NCHITTEST}},
        {H::SystemMenu, M::Messages, {Map::WM_NCRBUTTONUP}},
        {H::SwallowCaptionDoubleClick, M::Messages, {Map::WM_NCLBUTTONDBLCLK}},
        {H::NcCalcSize, M::Messages, {Map::WM_NCCALCSIZE}},
        {H::NcActivate, M::Messages, {Map::WM_NCACTIVATE}},
        {H::WindowShape, M::Messages, {Map::WM_SIZE}},
        {H::Colours, M::Messages, {Map::WM_CTLCOLORDLG, Map::WM_CTLCOLORSTATIC}},
        {H::RunUpdate, M::Messages, {WM_QG_RUN_UPDATE}},
        {H::TrayAnimate, M::Messages, {WM_QG_TRAY_ANIMATE}},
        {H::RefreshStatus, M::Messages, {WM_QG_REFRESH_STATUS}},
        {H::Close, M::Messages, {Map::WM_CLOSE}},
        {H::ExitQuiet, M::Messages, {WM_QG_EXIT_QUIET}},
        {H::QueryEndSession, M::Messages, {Map::WM_QUERYENDSESSION}},
        {H::EndSession, M::Messages, {Map::WM_ENDSESSION}},
        {H::ServiceMessage, M::Messages, {WM_QG_SERVICE_MESSAGE}},
        {H::ConfigChanged, M::Messages, {WM_QG_CONFIG_CHANGED}},
        {H::ButtonEnter, M::Messages, {WM_QG_BUTTON_ENTER}},
        {H::ButtonLeave, M::Messages, {WM_QG_BUTTON_LEAVE}},
        {H::SetInfo, M::Messages, {WM_QG_SET_INFO}},
        {H::GetInfo, M::Messages, {WM_QG_GET_INFO}},
        {H::Help, M::Messages, {WM_QG_HELP}},
        {H::Timers, M::Messages, {Map::WM_TIMER}},
        {H::Language, M::Messages, {WM_QG_LANGUAGE}},
        {H::ShowSummary, M::Messages, {WM_QG_SHOW_SUMMARY}},
        {H::FilterState, M::Messages, {WM_QG_FILTER_STATE}},
        {H::Exit, M::Messages, {WM_QG_EXIT}},
        {H::RpcStatus, M::Messages, {WM_QG_RPC_STATUS}},
        {H::WindowButtons, M::CommandIds, {1007, 1005, 1011, 1006, 1009, 1008}},
        {H::MenuCommands, M::CommandIds, {32785, 32782, 32783, 32784, 32790, 32789, 32787, 32788}},
        {H::SectionButtons, M::AnyCommand, {}},
        {H::HandCursor, M::Messages, {Map::WM_SETCURSOR}},
        {H::HomePageClick, M::Messages, {Map::WM_LBUTTONDOWN}},
        {H::ChainDialogResize, M::Messages, {Map::WM_SIZE, Map::WM_GETMINMAXINFO}},
        {H::ChainTray, M::Messages, {Map::WM_TIMER}},
        {H::ChainOffscreenDraw,
         M::Messages,
         {Map::WM_PAINT, Map::WM_PRINTCLIENT, Map::WM_ERASEBKGND}},
        // What the class framework reflects back to the controls that sent it.
        {H::ReflectNotifications,
         M::Messages,
         {Map::WM_COMMAND, Map::WM_NOTIFY, Map::WM_PARENTNOTIFY, Map::WM_DRAWITEM,
          Map::WM_MEASUREITEM, Map::WM_COMPAREITEM, Map::WM_DELETEITEM, Map::WM_VKEYTOITEM,
          Map::WM_CHARTOITEM, Map::WM_HSCROLL, Map::WM_VSCROLL, Map::WM_CTLCOLORBTN,
          Map::WM_CTLCOLORDLG, Map::WM_CTLCOLOREDIT, Map::WM_CTLCOLORLISTBOX,
          Map::WM_CTLCOLORMSGBOX, Map::WM_CTLCOLORSCROLLBAR, Map::WM_CTLCOLORSTATIC}},
    };
    return table;
}

bool Listed(const std::vector<int>& values, int value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

} // namespace

std::span<const MainDlgMessageMap::Entry> MainDlgMessageMap::Entries() {
    return Table();
}

bool MainDlgMessageMap::Matches(const Entry& entry, int message, WParam wParam) {
    switch (entry.match) {
    case Match::Messages:
        return Listed(entry.values, message);
    case Match::CommandIds:
        return message == WM_COMMAND && CommandCode(wParam) == 0 &&
               Listed(entry.values, CommandId(wParam));
    case Match::AnyCommand:
        return message == WM_COMMAND && CommandCode(wParam) == 0;
    }
    return false;
}

std::vector<MainDlgMessageMap::Handler> MainDlgMessageMap::Candidates(int message, WParam wParam) {
    std::vector<Handler> handlers;
    for (const Entry& entry : Table()) {
        if (Matches(entry, message, wParam))
            handlers.push_back(entry.handler);
    }
    return handlers;
}

std::optional<MainDlgMessageMap::Result>
MainDlgMessageMap::Dispatch(int message, WParam wParam, LParam lParam, Target& target) {
    for (const Entry& entry : Table()) {
        if (!Matches(entry, message, wParam))
            continue;
        Result result = 0;
        if (target.OnMessage(entry.handler, message, wParam, lParam, result))
            return result;
    }
    return std::nullopt;
}
