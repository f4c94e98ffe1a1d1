#!/usr/bin/env bash
# make run: installs the built program, its plug-in, the filter service and the updater into a
# sandbox root under the build folder, starts the service and runs Quillgate.
#
# With a display (X11 or Wayland) Quillgate runs there until the user exits it. Without one
# the script starts a virtual X server with a window manager that has a notification area,
# takes a short scripted tour, saves screenshots under <build>/screenshots/ and stops
# everything it started.
#
# Nothing outside the sandbox root is touched: QUILLGATE_ROOT, HOME, XDG_* and TMPDIR all
# point into it.
set -euo pipefail

build=${1:-build}
source_dir=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$build" && pwd)
root=$build/demo-root
program_dir=$root/usr/lib/quillgate
shots=$build/screenshots

say() { printf 'run: %s\n' "$*"; }

# --- the sandbox root --------------------------------------------------------------------
rm -rf "$root"
cmake --install "$build" --prefix "$root/usr" >/dev/null
for f in quillgate qgsasvc libQGPlugin.so quillgate-update QGSaLangs; do
    [ -e "$program_dir/$f" ] || { say "missing $program_dir/$f after install"; exit 1; }
done
# The file backend of the service enquiries finds the service through its unit file.
mkdir -p "$root/etc/systemd/system"
cp "$source_dir/packaging/systemd/VelloranQuillgateSvc.service" "$root/etc/systemd/system/"
# The machine store with the program's key, so that the filtering summary is shown at start.
mkdir -p "$root/var/lib/velloran/registry"
cat > "$root/var/lib/velloran/registry/machine.reg" <<'REG'
Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\SOFTWARE\Velloran\Quillgate]
"HidePopup"=dword:00000000
"iLang"=dword:00000409

[HKEY_LOCAL_MACHINE\SOFTWARE\Velloran\VLQGSAGui]
"Log Level"=dword:00000005
REG

# Keep the session's Wayland display and bus reachable when XDG_RUNTIME_DIR moves.
if [ -n "${WAYLAND_DISPLAY:-}" ] && [ "${WAYLAND_DISPLAY#/}" = "$WAYLAND_DISPLAY" ]; then
    export WAYLAND_DISPLAY="${XDG_RUNTIME_DIR:-/run/user/$(id -u)}/$WAYLAND_DISPLAY"
fi
if [ -z "${DBUS_SESSION_BUS_ADDRESS:-}" ] && [ -S "${XDG_RUNTIME_DIR:-/nonexistent}/bus" ]; then
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$XDG_RUNTIME_DIR/bus"
fi

export QUILLGATE_ROOT=$root
export HOME=$root/home/demo
export XDG_CONFIG_HOME=$HOME/.config
export XDG_DATA_HOME=$HOME/.local/share
export XDG_CACHE_HOME=$HOME/.cache
export XDG_RUNTIME_DIR=$root/run/user/demo
export TMPDIR=$root/tmp
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$TMPDIR"
mkdir -p -m 0700 "$XDG_RUNTIME_DIR"

started_xvfb=
started_wm=
cleanup() {
    set +e
    "$program_dir/quillgate" -u >/dev/null 2>&1
    "$program_dir/qgsasvc" -Stop >/dev/null 2>&1
    [ -n "$started_wm" ] && kill "$started_wm" 2>/dev/null
    [ -n "$started_xvfb" ] && kill "$started_xvfb" 2>/dev/null
    wait 2>/dev/null
}
trap cleanup EXIT

"$program_dir/qgsasvc" -Start
say "filter service started (log: $root/var/log/velloran/qgsasvc-messages.jsonl)"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    say "Quillgate is running; its trace log is $TMPDIR/QGSAGui.txt"
    say "try: QUILLGATE_ROOT=$root $program_dir/qgsasvc --simulate-filtering"
    status=0
    "$program_dir/quillgate" || status=$?
    say "Quillgate ended with exit code $status"
    exit 0
fi

# --- no display: a virtual one and a scripted tour -----------------------------------------
for tool in Xvfb xdotool icewm xprop; do
    command -v "$tool" >/dev/null || { say "$tool is missing: run 'make deps-run' as root"; exit 1; }
done
grab=$build/tools/screen-grab/qg-screen-grab
[ -x "$grab" ] || { say "missing $grab (build with QG_BUILD_TOOLS=ON)"; exit 1; }

# Waits up to $1 seconds for the command after it to succeed.
wait_for() {
    local seconds=$1; shift
    local deadline=$((SECONDS + seconds))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || return 1
        sleep 0.1
    done
}

display_number=$((90 + RANDOM % 100))
export DISPLAY=":$display_number"
Xvfb "$DISPLAY" -screen 0 1280x800x24 -nolisten tcp >"$TMPDIR/xvfb.log" 2>&1 &
started_xvfb=$!
wait_for 20 xprop -root || { say "the virtual X server did not start"; exit 1; }
# IceWM brings a task bar with a notification area (XEmbed), where the tray icon lives.
icewm >"$TMPDIR/icewm.log" 2>&1 &
started_wm=$!
wait_for 20 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' ||
    { say "the window manager did not start"; exit 1; }

rm -rf "$shots"
mkdir -p "$shots"
shot() {
    "$grab" "$shots/$1.png" && say "screenshot $shots/$1.png"
}

export QT_QPA_PLATFORM=xcb
"$program_dir/quillgate" >"$TMPDIR/quillgate.out" 2>&1 &
quillgate_pid=$!
window=
find_window() { window=$(xdotool search --onlyvisible --name '^Quillgate$' | head -n 1); [ -n "$window" ]; }
wait_for 60 find_window || { say "the main window did not appear"; shot 00-no-window; exit 1; }
sleep 1 # let the first paint and the summary settle before the picture
shot 01-started

# Section buttons by their place in the window (dialog units of a 521 by 276 dialog).
click_at() {
    local x_dlu=$1 y_dlu=$2
    eval "$(xdotool getwindowgeometry --shell "$window")"
    xdotool mousemove --window "$window" $((WIDTH * x_dlu / 521)) $((HEIGHT * y_dlu / 276)) click 1
    sleep 0.5
}
click_at 45 93 && shot 02-address-list
click_at 45 117 && shot 03-settings
click_at 45 69 && shot 04-status

QUILLGATE_ROOT=$root "$program_dir/qgsasvc" --simulate-filtering messages=8 spam=3 >/dev/null
# The Status page refreshes its counts on the main window's ten-second timer.
sleep 11
shot 05-after-filtering

click_at 510 8 # the close button hides the window
sleep 0.5
shot 06-hidden
# A second copy asks the first to show its window again, and leaves.
"$program_dir/quillgate" >/dev/null 2>&1 || true
wait_for 20 find_window || true
sleep 0.5
shot 07-shown-again

"$program_dir/quillgate" -u >/dev/null 2>&1 || true
wait "$quillgate_pid" 2>/dev/null || true
say "the tour is done; the pictures are in $shots"
