# Shared by the commands of scripts/. The caller has set -euo pipefail.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/scripts/lib/environment.sh"
source "$root/scripts/lib/packages.sh"
# Objects made in one checkout serve in another.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}

say() { printf '%s\n' "$*" >&2; }
fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# Everything started here is ended on every way out: by number, in reverse order. A negative number
# is a whole group of processes.
started=()
cleanup_folders=()
end_started() {
    local i pid
    # First the programs under Wine, through the prefix's own server.
    if [[ -n ${WINEPREFIX:-} && -n ${wine_used:-} ]]; then
        wineserver -k 2>/dev/null || true
        wineserver -w 2>/dev/null || true
    fi
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        pid=${started[i]}
        kill -- "$pid" 2>/dev/null || continue
        for _ in {1..50}; do
            kill -0 -- "$pid" 2>/dev/null || break
            sleep 0.1
        done
        kill -9 -- "$pid" 2>/dev/null || true
        wait "${pid#-}" 2>/dev/null || true
    done
    started=()
    ((${#cleanup_folders[@]})) && rm -rf "${cleanup_folders[@]}"
    return 0
}
trap end_started EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# together COMMAND...: runs them at the same time; fails when one of them does.
together() {
    local command pids=() pid status=0
    for command in "$@"; do
        set -m # a group of processes for each, so that all of it can be ended
        ("$command") </dev/null &
        set +m
        pids+=($!)
        started+=("-$!")
    done
    for pid in "${pids[@]}"; do
        wait "$pid" || status=1
    done
    return "$status"
}

# configure PRESET: the build itself looks at everything that it is made from but the presets.
configure() {
    local made="$root/build/$1/build.ninja"
    [[ $made -nt $root/CMakePresets.json ]] || cmake -S "$root" --preset "$1"
}

# build PRESET [TARGET...]: configures when needed and builds; quiet unless it fails.
build() {
    local preset=$1 log="$root/build/$1.log"
    shift
    say "Building ($preset)$([[ -d $root/build/$preset ]] || echo "; the first time takes minutes")"
    mkdir -p "$root/build"
    cd "$root"
    if ! { configure "$preset" && cmake --build --preset "$preset" ${*:+--target "$@"}; } >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        fail "the build of preset $preset failed (whole log: $log)"
    fi
}

# start_display: a virtual X display of our own; sets DISPLAY.
start_display() {
    command -v Xvfb >/dev/null || fail "no display: Xvfb is not installed"
    local number_file
    number_file=$(mktemp)
    # Xvfb writes the number of the display that it found free.
    Xvfb -displayfd 3 -screen 0 1600x1300x24 -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
    started+=($!)
    local pid=$!
    for _ in {1..100}; do
        [[ -s $number_file ]] && break
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
    done
    local number
    number=$(tr -d '\n' <"$number_file")
    rm -f "$number_file"
    [[ -n $number ]] || fail "no display: Xvfb did not start"
    export DISPLAY=":$number"
}

# start_wine: the Wine prefix of this build tree, made on first use.
start_wine() {
    command -v wine >/dev/null || fail "Wine is not installed"
    export WINEPREFIX="$root/build/wine-prefix" WINEDEBUG=-all WINEARCH=win64
    export WINEDLLOVERRIDES="mscoree,mshtml="
    wine_used=yes
    if [[ ! -f $WINEPREFIX/.ready ]]; then
        say "Making the Wine prefix"
        rm -rf "$WINEPREFIX"
        mkdir -p "$WINEPREFIX"
        wineboot -i >/dev/null 2>&1 || fail "Wine could not make its prefix in $WINEPREFIX"
        # A desktop of its own gives windows a title bar, focus and keyboard without a window
        # manager. Wine's own fonts are those that dialogs are laid out for.
        wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d brimwave /f >/dev/null 2>&1
        wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v brimwave /d 1600x1300 /f >/dev/null 2>&1
        # A program that crashes ends with its trace instead of waiting behind a dialog.
        wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
        wineserver -w
        cp /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
        touch "$WINEPREFIX/.ready"
    fi
}

# In the background, so that a signal to the command ends it at once, and Wine with it.
in_wine() {
    wine "$@" </dev/null &
    wait $!
}

# windows_path PATH: the same place as a program under Wine names it.
windows_path() { printf 'Z:%s' "$(realpath -m "$1")" | tr / '\\'; }

# start_devservice NAME ARG...: the local conversion service. Sets service_https, service_http
# (base addresses), service_ca and service_ready (its ready file).
start_devservice() {
    local program=$1 ready log
    shift
    ready=$(mktemp -u)
    log=$(mktemp)
    "$program" --state "$root/build/devservice-state" --ready-file "$ready" "$@" >"$log" 2>&1 &
    local pid=$!
    started+=("$pid")
    for _ in {1..200}; do
        [[ -s $ready ]] && break
        kill -0 "$pid" 2>/dev/null || fail "the local service did not start: $(tail -n 1 "$log")"
        sleep 0.05
    done
    [[ -s $ready ]] || fail "the local service did not get ready: $(tail -n 1 "$log")"
    service_ready=$ready
    service_https="https://localhost:$(sed -n 's/.*"https": *\([0-9]*\).*/\1/p' "$ready" | head -n 1)"
    service_http="http://localhost:$(sed -n 's/.*"http": *\([0-9]*\).*/\1/p' "$ready" | head -n 1)"
    service_ca=$(sed -n 's/.*"ca": *"\([^"]*\)".*/\1/p' "$ready" | head -n 1)
    cleanup_folders+=("$ready" "$log")
}
