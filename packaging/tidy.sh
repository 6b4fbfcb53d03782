#!/usr/bin/env bash
# Looks at each file of the program, or at those named, with clang-tidy, as build/dev compiles it. One
# that was clean is not looked at again until it, a header of the tree that it includes, how it is
# compiled, or the settings change.
set -euo pipefail
cd "$(dirname "$0")/.."
source packaging/debian.sh
install_missing "${build_packages[@]}" "${check_packages[@]}"

cache=${KERVAN_TIDY_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kervan-tidy}
mkdir -p "$cache"
includes=$(mktemp)
commands=$(mktemp)
trap 'rm -f "$includes" "$commands"' EXIT
# Each file with one that it includes, as the compiler has told; the first is the file itself.
ninja -C build/dev -t deps | awk '
    /^[^ ]/ { first = 1; next }
    first { file = $1; first = 0 }
    $1 ~ /^\.\.\/\.\.\/(src|tools)\// { print substr(file, 7), substr($1, 7) }' |
    sort -u >"$includes"
# Each file and its command, wherever the tree lies.
sed "s#$PWD/##g" build/dev/compile_commands.json | awk '
    /^  "command": / { command = $0 }
    /^  "file": / { gsub(/^  "file": "|",?$/, ""); print $0, command }' >"$commands"
settings=$({
    clang-tidy-14 --version
    cat .clang-tidy
    dpkg-query -W qt6-base-dev libstdc++-12-dev
} | sha256sum)

look() { # FILE
    local key
    key=$({
        echo "$settings"
        awk -v file="$1" '$1 == file' "$commands"
        awk -v file="$1" '$1 == file { print $2 }' "$includes" | xargs -r cat
        cat "$1"
    } | sha256sum | cut -d ' ' -f 1)
    [[ -e $cache/$key ]] && return 0
    clang-tidy-14 -p build/dev --quiet --warnings-as-errors='*' "$1" 2>/dev/null || {
        echo "Not clean: $1" >&2
        return 1
    }
    touch "$cache/$key"
}
export -f look
export cache commands includes settings

files=("$@")
(($#)) || mapfile -t files < <(git ls-files 'src/*.cpp' 'tools/*.cpp')
# shellcheck disable=SC2016 # it is for the shell that xargs starts
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 1 bash -c 'look "$1"' _
