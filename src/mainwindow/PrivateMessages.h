#pragma once
// Numbers of the private window messages between the main window, its helpers and the
// plug-in's pages. Each travels as a PrivateMessageEvent whose type is the number. The two
// that the toolkit's buttons send (1480, 1481) are declared in toolkit/PrivateMessages.h.
// Numbers without a name here (1035, 1036, 1043, 1056) belong to the windows that use them.

inline constexpr int WM_QG_SERVICE_THREAD_DONE = 1025; // service start worker -> its dialog
inline constexpr int WM_QG_PAGE_INIT = 1030;           // main window -> Status page
inline constexpr int WM_QG_PAGE_SHOW = 1031;           // main window -> Status page
inline constexpr int WM_QG_PAGE_REFRESH = 1032;        // main window -> Status page
inline constexpr int WM_QG_RUN_UPDATE = 1037;          // wParam: mode
inline constexpr int WM_QG_SHOW_SUMMARY = 1041;        // shows the summary pop-up
inline constexpr int WM_QG_EXIT_QUIET = 1048;          // a page ends the program, exit code 0
inline constexpr int WM_QG_SET_INFO = 1051;            // wParam: code; lParam: value
inline constexpr int WM_QG_GET_INFO = 1052;            // wParam: code; lParam: value
inline constexpr int WM_QG_TRAY_ANIMATE = 1054;        // wParam: 1 starts, anything else stops
inline constexpr int WM_QG_LANGUAGE = 1055;            // wParam: language id
inline constexpr int WM_QG_FILTER_STATE = 1057;        // wParam: the setting FilterOn
inline constexpr int WM_QG_REFRESH_STATUS = 1058;      // wParam 0: the service is back
inline constexpr int WM_QG_EXIT = 1059;                // ends the program, exit code 1
inline constexpr int WM_QG_SERVICE_MESSAGE = 1060;     // wParam: an IMessage*
inline constexpr int WM_QG_CONFIG_CHANGED = 1061;      // to the main window, then Settings page
inline constexpr int WM_QG_RPC_STATUS = 1062;          // wParam: 1 service down, 0 back
inline constexpr int WM_QG_HELP = 1280;                // same as the help menu command
