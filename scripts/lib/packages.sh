# Installs Debian packages that are missing. To be sourced.

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite lowdown)
font_packages=(fonts-dejavu-core)
display_packages=(xvfb)

# install_packages NAME...: nothing happens when all are there. Ends the script with a clear line when one cannot be had.
install_packages() {
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing and only root or sudo can install them: ${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1; then
        tail -n 5 "$log" >&2
        echo "These packages could not be installed with apt-get: ${missing[*]}" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}

# build PRESET [TARGET...]: configures one of the presets and builds it, or only the targets named.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
