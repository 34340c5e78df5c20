# Building blocks of `run` and `scripts/screenshots`: a tool with a profile of its own on a simulated vehicle, on the
# desktop or on a virtual display. Sourced with `root` set to the project's root. Needs end_session in a trap.
# shellcheck shell=bash

bin=$root/build/release/bin
session=$root/build/run
started=()      # process numbers, in the order of their start
tool_window=''

say() { printf '%s\n' "$*"; }
die() {
    say "$*" >&2
    exit 1
}

# wait_for SECONDS COMMAND...: true as soon as the command is, false after that time.
wait_for() {
    local tries=$(($1 * 10))
    shift
    until "$@"; do
        [ $((tries -= 1)) -gt 0 ] || return 1
        sleep 0.1
    done
}

running() { kill -0 "$1" 2>/dev/null; }

# Ends what was started, the last first.
end_session() {
    local i
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
    started=()
}

build_programs() {
    cmake --preset release -S "$root" -DFENRIK_BENCH=OFF >"$session/configure.log" 2>&1 ||
        { cat "$session/configure.log" >&2; die "The build could not be set up."; }
    cmake --build "$root/build/release" --target fenrik-diagnostics fenrik-vehicle fenrik-relay fenrik_sample fenrik_help_files fenrik_legacy_sample
}

# The user's own settings stay untouched. What is changed in the tool is kept for the next run.
use_own_profile() {
    export XDG_CONFIG_HOME=$session/config XDG_DATA_HOME=$session/data
    if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
        export XDG_RUNTIME_DIR=$session/runtime
        mkdir -p -m 0700 "$XDG_RUNTIME_DIR"
    fi
    mkdir -p "$XDG_CONFIG_HOME/fenrik-diagnostics" "$XDG_DATA_HOME"
    local settings=$XDG_CONFIG_HOME/fenrik-diagnostics/settings.ini
    [ -e "$settings" ] || printf '[Settings]\nCommPort=5\n' >"$settings"
}

# In the profile: the older network, with the database of the vehicle that the simulator is then. A database that was
# chosen in the tool stays.
choose_legacy_network() {
    local settings=$XDG_CONFIG_HOME/fenrik-diagnostics/settings.ini
    sed -i '/^Protocol=/d; s/^\[Settings\]$/&\nProtocol=Fenrik 98/' "$settings"
    grep -q '^\[Database\]' "$settings" ||
        printf '\n[Database]\nPath=%s\nName=Demonstration Bus 98.dav\n' "$bin/legacy" >>"$settings"
}

# In the profile: the modem at COM6, and the number of the simulated vehicle.
choose_modem() {
    local settings=$XDG_CONFIG_HOME/fenrik-diagnostics/settings.ini
    sed -i '/^ConnectionType=/d; /^ModemCommPort=/d; s/^\[Settings\]$/&\nConnectionType=2\nModemCommPort=6/' "$settings"
    grep -q '^LastPhoneNumber=.' "$settings" ||
        sed -i '/^LastPhoneNumber=/d; s/^\[Settings\]$/&\nLastPhoneNumber=555-0100/' "$settings"
}

vehicle_ready() { grep -q '^ready ' "$session/vehicle.out" || ! running "$vehicle"; }

# start_vehicle ARGUMENT...: the simulator on COM5, if no other port is among the arguments.
start_vehicle() {
    : >"$session/vehicle.out"
    "$bin/fenrik-vehicle" --port 5 --log "$session/vehicle.log" "$@" >"$session/vehicle.out" 2>&1 &
    vehicle=$!
    started+=("$vehicle")
    wait_for 10 vehicle_ready || die "The simulator does not get ready."
    grep -q '^ready ' "$session/vehicle.out" || { cat "$session/vehicle.out" >&2; die "The simulator has ended."; }
}

relay_ready() { grep -q '^ready ' "$session/relay.out" || ! running "$relay"; }

# The relay, on a port that is free; sets relay_port.
start_relay() {
    : >"$session/relay.out"
    "$bin/fenrik-relay" --listen 127.0.0.1:0 --log "$session/relay.log" >"$session/relay.out" 2>&1 &
    relay=$!
    started+=("$relay")
    wait_for 10 relay_ready || die "The relay does not get ready."
    grep -q '^ready ' "$session/relay.out" || { cat "$session/relay.out" >&2; die "The relay has ended."; }
    relay_port=$(sed -n 's/^ready .*://p' "$session/relay.out")
}

# start_colleague ARGUMENT...: Bob, at the relay, with the simulated vehicle. His answers come from the terminal.
start_colleague() {
    : >"$session/vehicle.out"
    "$bin/fenrik-vehicle" --relay "127.0.0.1:$relay_port" --name Bob --control --log "$session/vehicle.log" "$@" \
        <&0 > >(tee "$session/vehicle.out") 2>&1 &
    vehicle=$!
    started+=("$vehicle")
    wait_for 10 vehicle_ready || die "The colleague does not get ready."
    running "$vehicle" || die "The colleague has ended."
}

# A profile of Ann's for the relay of this run, whose port is another each time, and the relay as the connection method.
use_relay_profile() {
    local folder=$XDG_CONFIG_HOME/fenrik-diagnostics id=5E1F0A44-93D6-4C0B-8A57-2B6C0D9E7F11
    local key="Harnwick%20Technologies\\RemoteServer\\Profiles\\%7B$id%7D"
    printf '%s\n' '[Software]' "$key\\UserName=Ann" "$key\\LogonID=ann" "$key\\ServerName=127.0.0.1" \
        "$key\\ServerPort=dword:$relay_port" >"$folder/registry.ini"
    grep -q '^RDRecentProfileKey=' "$folder/settings.ini" ||
        printf '%s\n' '[Settings]' CommPort=5 ConnectionType=3 RDEnable=True "RDRecentProfileKey={$id}" \
            >"$folder/settings.ini"
}

find_users_window() { xdotool search --onlyvisible --name '^Remote Diagnostics - Active Users' >/dev/null 2>&1; }

# Chooses the first user in the window that connecting has opened.
choose_colleague() {
    wait_for 10 find_users_window || die "The tool shows no users; see $session/tool.log."
    sleep 0.5
    press space
    press Return
}

# A virtual display under a number that is free, with a window manager, so that windows have focus and menus work.
start_display() {
    : >"$session/display"
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$session/display" >"$session/xvfb.log" 2>&1 &
    started+=("$!")
    wait_for 10 grep -q '^[0-9]' "$session/display" || die "The virtual display does not start; see $session/xvfb.log."
    DISPLAY=:$(<"$session/display")
    export DISPLAY
    unset WAYLAND_DISPLAY
    rm -f "$session/openbox-ready"
    openbox --sm-disable --config-file "$root/scripts/openbox.xml" --startup "touch '$session/openbox-ready'" \
        >"$session/openbox.log" 2>&1 &
    started+=("$!")
    wait_for 10 test -e "$session/openbox-ready" || die "The window manager does not start; see $session/openbox.log."
}

start_tool() {
    touch "$session/tool-started"
    "$bin/fenrik-diagnostics" >"$session/tool.log" 2>&1 &
    tool=$!
    started+=("$tool")
}

# The main window is the one that is large; the splash window before it has the program's name too.
find_tool_window() {
    local id WIDTH
    running "$tool" || return 0
    for id in $(xdotool search --onlyvisible --name '^Fenrik(II)? Diagnostics' 2>/dev/null); do
        WIDTH=0
        eval "$(xdotool getwindowgeometry --shell "$id" 2>/dev/null | grep '^WIDTH=')"
        [ "$WIDTH" -lt 700 ] || { tool_window=$id; return 0; }
    done
    return 1
}

wait_for_tool_window() {
    wait_for 60 find_tool_window || die "The tool shows no window; see $session/tool.log."
    [ -n "$tool_window" ] || { cat "$session/tool.log" >&2; die "The tool has ended."; }
    xdotool windowactivate --sync "$tool_window"
}

# press KEYS: to the window that has the focus.
press() { xdotool key --clearmodifiers "$1"; }

# take_screenshot FILE: the whole display.
take_screenshot() { import -window root "$1"; }

tool_ended() { ! running "$tool"; }

# Closes the tool as a user does. A question about saving what was learnt is answered with No.
close_tool() {
    press ctrl+q
    if ! wait_for 5 tool_ended; then
        press alt+n
        wait_for 10 tool_ended || die "The tool does not close."
    fi
    wait "$tool" || { cat "$session/tool.log" >&2; die "The tool has failed."; }
}

# Number of frames, or messages of the older network, that the tool has written to its logs since it was started.
logged_frames() {
    [ -d "$bin/diaglogs" ] || { echo 0; return; }
    find "$bin/diaglogs" -name '*.txt' -newer "$session/tool-started" -exec cat {} + |
        grep -cE '([0-9A-F]{1,2}\.){5}[0-9A-F]{1,2}|^ [1-6]  ' || true
}
