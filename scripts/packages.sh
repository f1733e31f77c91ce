# Sourced by the scripts of this project: installs the Debian packages it is called with, where they
# are missing, as root or through sudo.

install_packages() {
    local package missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then return 0; fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing and there is neither root nor sudo to install them: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq || return 1
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# Where npm's registry can't be reached, that is found in seconds instead of minutes.
export npm_config_fetch_retry_mintimeout=1000 npm_config_fetch_retry_maxtimeout=5000

# What the tests and pictures of the page need: node, with modules from npm, and a browser.
install_page_tools() {
    command -v node >/dev/null && command -v npm >/dev/null || install_packages nodejs npm || return 1
    command -v chromium >/dev/null || install_packages chromium fonts-dejavu-core || return 1
    (cd tests/viewer && npm ci --no-audit --no-fund --silent)
}

# What building needs, and what the tests need on top. The reader of FBX and Collada comes along where its package is,
# which is too large to fetch for a look at the tool.
BUILD_PACKAGES=(g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libtinygltf-dev libstb-dev esbuild libjs-three)
TEST_PACKAGES=("${BUILD_PACKAGES[@]}" libgtest-dev libgmock-dev googletest python3 parallel libassimp-dev
    pybind11-dev python3-dev python3-numpy)
SDK_PACKAGES=(libxt-dev binutils)
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix wine64)

# configure PRESET [cmake -D options]
configure() {
    local preset=$1
    shift
    cmake --preset "$preset" "$@" >"$BUILD_LOG" 2>&1 && return 0
    told_failure
}

# build PRESET [cmake -D options]: configures and builds.
build() {
    configure "$@" || return 1
    cmake --build --preset "$1" >>"$BUILD_LOG" 2>&1 || told_failure
}

told_failure() {
    tail -n 60 "$BUILD_LOG" >&2
    echo "The build failed; all of its output is in $BUILD_LOG" >&2
    return 1
}
