# shellcheck shell=bash
# Sourced by ./windows: puts together what a user gets, and makes the zip and the installer of it.

# The folders where a DLL may come from; what is in none of them belongs to Windows.
windows_dll_folders() {
    echo "$KERVAN_WINDOWS_LIBRARIES/bin"
    dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)"
    echo /usr/x86_64-w64-mingw32/lib
}

# Copies beside the programs of a folder the DLLs that they and its plugins ask for.
add_dlls() { # FOLDER
    local folder=$1 name place added=1
    while ((added)); do
        added=0
        while read -r name; do
            [[ -e $folder/$name ]] && continue
            while read -r place; do
                [[ -e $place/$name ]] || continue
                cp "$place/$name" "$folder/"
                added=1
                break
            done < <(windows_dll_folders)
        done < <(find "$folder" \( -name '*.exe' -o -name '*.dll' \) \
            -exec x86_64-w64-mingw32-objdump -p {} + | sed -n 's/.*DLL Name: //p' | sort -u)
    done
}

add_plugins() { # FOLDER PLUGIN...
    local folder=$1 plugin
    for plugin in "${@:2}"; do
        mkdir -p "$folder/plugins/${plugin%/*}"
        cp "$KERVAN_WINDOWS_LIBRARIES/plugins/$plugin.dll" "$folder/plugins/${plugin%/*}/"
    done
}

# Windows' editor reads UTF-8 by its mark and wants its own ends of lines.
as_windows_text() { # SOURCE TARGET
    { printf '\xef\xbb\xbf' && sed 's/$/\r/' "$1"; } >"$2"
}

stage_program() { # BUILD FOLDER
    local build=$1 folder=$2 text
    rm -rf "$folder"
    mkdir -p "$folder"/{translations,lisanslar}
    cp "$build"/src/app/kervan-{transfer,kurulum,aktar}.exe "$folder/"
    add_plugins "$folder" platforms/qwindows sqldrivers/qsqlite
    add_dlls "$folder"
    printf '[Paths]\r\nPrefix=.\r\n' >"$folder/qt.conf"
    cp /usr/share/qt6/translations/qtbase_tr.qm "$folder/translations/"
    for text in "$KERVAN_WINDOWS_LIBRARIES"/licences/*; do
        as_windows_text "$text" "$folder/lisanslar/$(basename "${text%.txt}").txt"
    done
    as_windows_text /usr/share/doc/qt6-translations-l10n/copyright \
        "$folder/lisanslar/qt6-translations.txt"
    as_windows_text <(sed 's#docs/kullanim.md#kilavuz/kullanim.md#' CHANGELOG.md) \
        "$folder/Yenilikler.txt"
    cp -r samples "$folder/ornekler"
    rm -r "$folder"/ornekler/{make,README.md}
    mkdir "$folder/kilavuz"
    cp -r docs/kullanim.md docs/pictures "$folder/kilavuz/"
    find "$folder" \( -name '*.exe' -o -name '*.dll' \) -exec x86_64-w64-mingw32-strip {} +
}

make_zip() { # FOLDER FILE
    rm -f "$2"
    (cd "$(dirname "$1")" && zip -q -r -9 -X "$2" "$(basename "$1")")
    (($(stat -c %s "$2") <= 25000000)) || { echo "$2 is larger than 25 MB" >&2 && return 1; }
}

# The uninstaller removes exactly what was laid out, so it is given the list, and the installer what
# to bring to its place; samples, in which somebody may have worked, stay.
make_installer() { # FOLDER FILE VERSION ICON
    local folder=$1
    local list=build/mingw/kurulum-files.nsh moves=build/mingw/kurulum-moves.nsh
    # shellcheck disable=SC1003,SC2016 # for the installer, not for this shell
    {
        (cd "$folder" && find . -type f ! -path './ornekler/*' -printf '%P\n') | sort | tr / '\\' \
            | sed 's/.*/Delete "$INSTDIR\\&"/'
        echo '!insertmacro FilesAreGone'
        (cd "$folder" && find . -mindepth 1 -depth -type d ! -name ornekler -printf '%P\n') | tr / '\\' \
            | sed 's/.*/RMDir "$INSTDIR\\&"/'
    } >"$list"
    # shellcheck disable=SC1003
    {
        (cd "$folder" && find . -mindepth 1 -type d ! -name ornekler -printf '%P\n') | sort | tr / '\\' \
            | sed 's/.*/!insertmacro OfFolder "&"/'
        (cd "$folder" && find . -type f ! -path './ornekler/*' -printf '%P\n') | sort | tr / '\\' \
            | sed 's/.*/!insertmacro OfFile "&"/'
    } >"$moves"
    makensis -V2 -INPUTCHARSET UTF8 "-DPROGRAM=$folder" "-DFILES=$PWD/$list" "-DMOVES=$PWD/$moves" \
        "-DTARGET=$2" "-DVERSION=$3" "-DNUMBERS=$(cut -d . -f 1-4 <<<"$3.0.0.0")" "-DICON=$4" "-DSIZE=$(du -sk "$folder" | cut -f 1)" packaging/windows/kurulum.nsi
}
