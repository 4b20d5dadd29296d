# What the builds and runs need on a bare Debian 12. Sourced by the commands of scripts/.

build_packages=(
    ca-certificates ccache cmake g++ g++-mingw-w64-x86-64-posix googletest git libassimp-dev
    libcpp-httplib-dev libssl-dev libz-mingw-w64-dev make ninja-build nlohmann-json3-dev zlib1g-dev
)
# Wine, what it loads at run time for TLS and windows, fonts, and the virtual display.
run_packages=(
    fonts-liberation fonts-wine jq libgnutls30 libxcomposite1 libxcursor1 libxfixes3 libxi6
    libxinerama1 libxrandr2 libxrender1 openssl procps wine wine64 xvfb
)
test_packages=(
    clang clang-format-14 clang-tidy-14 libbenchmark-dev libclang-rt-14-dev python3
    python3-jsonschema rapidjson-dev
)

# ensure_packages NAME...: installs those that are missing; costs nothing when none is.
ensure_packages() {
    local name missing=()
    for name in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Abbrev}' "$name" 2>/dev/null) == ii* ]] ||
            missing+=("$name")
    done
    ((${#missing[@]})) || return 0
    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "missing packages: ${missing[*]} (install them, or run this as root or with sudo on the machine)"
        as_root=(sudo)
    fi
    say "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    as_root+=(env DEBIAN_FRONTEND=noninteractive "http_proxy=${http_proxy:-}"
        "https_proxy=${https_proxy:-}" "no_proxy=${no_proxy:-}")
    if ! { "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" apt-get install -y -qq \
            --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
        tail -n 5 "$log" >&2
        rm -f "$log"
        fail "could not install: ${missing[*]}"
    fi
    rm -f "$log"
}
