# shellcheck shell=bash
# Shared by scripts/run, scripts/test and scripts/make-demo. Source it, don't run it.
#
#   vantile_install_deps         install the Debian packages that are missing
#   vantile_build [target...]    configure ./build when needed and build (all by default)
#
# VANTILE_BUILD_DIR overrides the build directory (default: <repository>/build).

VANTILE_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
VANTILE_BUILD_DIR=${VANTILE_BUILD_DIR:-$VANTILE_ROOT/build}
VANTILE_BUILD_TYPE=${VANTILE_BUILD_TYPE:-RelWithDebInfo}

# What a fresh Debian 12 machine needs to build, test and run the designer.
# The two font packages give the Chinese texts of the interface their glyphs.
VANTILE_PACKAGES=(
    qtbase5-dev qttools5-dev qttools5-dev-tools
    libqrcodegencpp-dev libmediainfo-dev
    cmake g++ make
    fonts-noto-cjk fonts-wqy-microhei fonts-dejavu-core
)

vantile_log() { printf '==> %s\n' "$*" >&2; }
vantile_die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# Prints the packages of the arguments that are not installed, one a line.
vantile_missing_packages() {
    local p status
    for p in "$@"; do
        status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
        [[ $status == "install ok installed" ]] || printf '%s\n' "$p"
    done
}

vantile_install_deps() {
    if ! command -v dpkg-query >/dev/null 2>&1; then
        vantile_log "no dpkg here: make sure these (or their equivalents) are installed: ${VANTILE_PACKAGES[*]}"
        return 0
    fi
    local missing
    mapfile -t missing < <(vantile_missing_packages "${VANTILE_PACKAGES[@]}")
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    vantile_log "installing missing packages: ${missing[*]}"
    local sudo=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null 2>&1 || vantile_die "not root and no sudo: install ${missing[*]} first"
        sudo=(sudo)
        # no password prompt where nobody can answer it
        if [[ ${CI:-} == true || ! -t 0 ]]; then
            sudo+=(-n)
        fi
    fi
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
}

# Configures the build directory (first time only: later runs let the build
# re-run cmake by itself when a CMakeLists.txt changed) and builds.
vantile_build() {
    if [[ ! -f $VANTILE_BUILD_DIR/CMakeCache.txt ]]; then
        vantile_log "configuring $VANTILE_BUILD_DIR ($VANTILE_BUILD_TYPE)"
        cmake -S "$VANTILE_ROOT" -B "$VANTILE_BUILD_DIR" -DCMAKE_BUILD_TYPE="$VANTILE_BUILD_TYPE"
    fi
    local jobs
    jobs=$(nproc 2>/dev/null || echo 2)
    local targets=()
    local t
    for t in "$@"; do
        targets+=(--target "$t")
    done
    vantile_log "building${*:+ $*}"
    cmake --build "$VANTILE_BUILD_DIR" -j"$jobs" "${targets[@]}"
}
