# shellcheck shell=bash disable=SC2034
# Sourced by the scripts: what the project needs on Debian 12, and how it gets there.

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libgl-dev libxkbcommon-dev
    unixodbc-dev libzip-dev)
test_packages=(libxlsxwriter-dev locales) # of the tests and the tour; Qt's own come with qt6-base-dev
program_packages=(libqt6sql6-sqlite libodbc2 tdsodbc qt6-translations-l10n fonts-dejavu-core)
check_packages=(clang-format-14 clang-tidy-14 libbenchmark-dev shellcheck ccache)
fuzz_packages=(clang-14 libclang-rt-14-dev) # libclang-rt holds libFuzzer and the sanitizers
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev tcl nsis zip)
wine_packages=(wine wine64 xvfb unzip x11-utils)

install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed \
            || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    local as_root=()
    ((EUID == 0)) || as_root=(sudo env DEBIAN_FRONTEND=noninteractive)
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}
