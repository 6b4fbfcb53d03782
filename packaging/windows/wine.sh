# shellcheck shell=bash
# Sourced by ./windows: runs under Wine what it built, on a display of its own.

# A new Windows each time, without what only browsers and .NET need.
wine_start() {
    export WINEPREFIX=$PWD/build/wine WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
    unset TZ # Windows' C library takes a zone's name for GMT
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    exec {display_number}< <(exec Xvfb -displayfd 1 -screen 0 1600x1000x24 -nolisten tcp 2>/dev/null)
    xvfb_process=$!
    trap wine_stop EXIT
    read -r -u "$display_number" number
    export DISPLAY=:$number
    wine wineboot -i
    wineserver -w
    # A desktop of its own, and not that of whoever runs this.
    find "$WINEPREFIX/drive_c/users" -type l -exec rm {} \; -exec mkdir {} \;
    # Windows' own fonts aren't here, and Wine would take some with serifs.
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Segoe UI' /d 'DejaVu Sans' /f
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Tahoma' /d 'DejaVu Sans' /f
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Courier New' /d 'DejaVu Sans Mono' /f
    # Without a window manager on the display nobody would take a closed window off it, for which
    # Wine waits two seconds each time.
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
    # A crash is the test's to report; Wine's debugger would wait for somebody to see it.
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Auto /d 1 /f
    wineserver -w
}

wine_stop() {
    wineserver -k || true
    kill "$xvfb_process" 2>/dev/null || true
}

say() {
    echo "== $*"
}

# The tests' own programs find the DLLs of the libraries by this path.
wine_path() {
    windows_dll_folders | while read -r folder; do winepath -w "$folder"; done | paste -sd ';'
}

same_documents() { # FOLDER FOLDER
    local name count=0
    for name in "$1"/*.xml; do
        cmp "$name" "$2/$(basename "$name")"
        count=$((count + 1))
    done
    if [[ $count -ne $(find "$2" -name '*.xml' | wc -l) || $count -eq 0 ]]; then
        echo "Not the same documents in $1 and $2" >&2
        return 1
    fi
    echo "$count documents are the same, byte for byte"
}

# Another country's decimal mark, digits and form of dates, as a desktop can be set to.
other_country() {
    local international='HKCU\Control Panel\International' setting
    for setting in sDecimal=٫ sThousand=٬ sList=، sNativeDigits=٠١٢٣٤٥٦٧٨٩ NumShape=2 \
        sShortDate=yyyy/M/d 'sTimeFormat=tt h:mm' s1159=ص s2359=م; do
        wine reg add "$international" /v "${setting%%=*}" /d "${setting#*=}" /f
    done
    wineserver -w
    [[ $(wine cmd /c 'echo %date%') == 20??/* ]] || { echo "The country was not changed" >&2 && return 1; }
}

# A crash is told with the places that led there.
wine_tour_into() { # PROGRAM FOLDER
    wine "$1/kervan-tour.exe" samples "$2" || {
        cat "$2/cokme-raporu.txt" >&2 || true
        return 1
    }
}

# The tour of both systems: the same documents, and the pictures to look at. It stands in the place of
# the program that users get. Then once more in another country.
wine_tour() { # PROGRAM
    local program=build/wine/program
    cmake --preset release
    cmake --build --preset release --target kervan-tour
    cmake --build --preset mingw --target kervan-tour
    rm -rf build/tour build/windows/tour
    env -u DISPLAY QT_QPA_PLATFORM=offscreen build/release/tour/kervan-tour samples build/tour
    cp -r "$1" "$program"
    cp build/mingw/tour/kervan-tour.exe "$program/"
    add_dlls "$program"
    wine_tour_into "$program" build/windows/tour
    same_documents "build/tour/logo xml" "build/windows/tour/logo xml"
    other_country
    wine_tour_into "$program" build/wine/tour
    same_documents "build/tour/logo xml" "build/wine/tour/logo xml"
}

wine_tests() {
    cmake --build --preset mingw
    WINEPATH=$(wine_path) \
        ctest --test-dir build/mingw --output-on-failure
    say "left out under Wine"
    grep -h -A 1 '^SKIP' build/mingw/Testing/Temporary/LastTest.log || true
}

# What is the user's own in a program folder, by name and contents.
own_files() { # FOLDER
    (cd "$1" && find ./*.dbs ./*.kvz txt ornekler "logo xml" -type f -exec sha256sum {} + | sort -k 2)
}

# The folder stands unquoted at the end, blanks and all, as installers of its kind want it.
install_into() { # INSTALLER FOLDER
    wine cmd /c "$(winepath -w "$1") /S /D=$2"
}

# What the installer brings, by name and contents.
program_files() { # FOLDER
    (cd "$1" && find ./*.exe ./*.dll ./*.txt plugins translations lisanslar kilavuz -type f \
        -exec sha256sum {} + | sort -k 2)
}

# The installer ends with this status and lays nothing out.
refused() { # STATUS INSTALLER FOLDER
    local status=0
    install_into "$2" "$3" || status=$?
    [[ $status == "$1" ]] || { echo "Into $3 it ended with $status and not $1" >&2 && return 1; }
}

# Over a program that runs; it goes on.
refuse_while_open() { # INSTALLER TARGET PROGRAM [ARGUMENTS]
    timeout 120 wine "${@:3}" &
    sleep 10
    refused 3 "$1" "$2"
    wine taskkill /f /im "$(basename "$3")"
    wait $! || true
}

# Runs the command while another program keeps a file of the folder.
while_kept() { # FOLDER NAME COMMAND...
    printf 'ping -n 90 127.0.0.1 <%s >nul\r\n' "$2" >"$WINEPREFIX/drive_c/keep.bat"
    (cd "$1" && exec timeout 120 wine cmd /c 'C:\keep.bat') &
    local keeper=$!
    sleep 5
    "${@:3}"
    wine taskkill /f /im ping.exe
    wait "$keeper" || true
}

refuse_while_kept() { # INSTALLER TARGET FOLDER NAME
    while_kept "$3" "$4" refused 7 "$1" "$2"
}

# As a user starts it, it goes on as a copy of itself and is back at once.
uninstall() { # FOLDER
    wine "$1/kaldir.exe" /S
    wineserver -w
}

# While something else runs; it has to be done by then.
uninstall_meanwhile() { # FOLDER
    wine "$1/kaldir.exe" /S
    sleep 15
}

# The entries of the start menu and of the desktop.
count_links() {
    find "$WINEPREFIX/drive_c/users" -name 'Kervan Transfer.lnk' | wc -l
}

# Installed, used, installed again and taken away: what is the user's own stays as it was.
wine_install() { # INSTALLER
    local folder="$WINEPREFIX/drive_c/Çalışma Yeri/Kervan" before after left
    local target='C:\Çalışma Yeri\Kervan' beside='C:\Program Files Kervan' program
    install_into "$1" "$target"
    [[ $(count_links) == 2 ]]
    find "$WINEPREFIX/drive_c/users" -path '*/Desktop/*.lnk' -delete # it isn't wanted
    [[ -f $folder/kervan-transfer.exe && -f $folder/data.dbs && -f $folder/kilavuz/kullanim.md ]]
    wine "$folder/kervan-kurulum.exe" "$target" "$target\\ornekler"
    echo "belge" >"$folder/logo xml/belge.xml"
    echo "benim" >"$folder/ornekler/kasa.kvz"
    before=$(own_files "$folder")
    program=$(program_files "$folder")
    chmod a-w "$folder/kervan-transfer.exe"
    install_into "$1" 'C:\Windows\..\Çalışma Yeri\.\Kervan' # the same folder
    [[ $(program_files "$folder") == "$program" ]]
    [[ -z $(find "$folder" -name '.kervan-*') ]]
    [[ $(own_files "$folder") == "$before" && $(count_links) == 1 ]]
    wine reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\KervanTransfer' /v DisplayVersion
    refused 5 "$1" 'C:\Program Files\Kervan'
    refused 5 "$1" 'C:\Windows\..\Program Files (x86)'
    refused 5 "$1" "$(winepath -s 'C:\Program Files')\\Yeni\\Kervan" # by its short name
    : >"$folder/.kervan-yeni" # where the new one is to be unpacked first
    refused 7 "$1" "$target"
    rm "$folder/.kervan-yeni"
    [[ $(program_files "$folder") == "$program" ]]
    refuse_while_kept "$1" "$target" "$folder" Qt6Sql.dll
    [[ $(program_files "$folder") == "$program" && ! -e $folder/.kervan-eski ]]
    # Behind an installer that was killed when one new file stood and another did not.
    mkdir "$folder"/.kervan-{eski,yeni}
    mv "$folder"/Qt6{Core,Gui}.dll "$folder/.kervan-eski/"
    echo "yeni" >"$folder/Qt6Core.dll"
    refuse_while_kept "$1" "$target" "$folder" Qt6Core.dll
    [[ -e $folder/.kervan-eski/Qt6Core.dll && -e $folder/.kervan-eski/Qt6Gui.dll ]]
    refuse_while_kept "$1" "$target" "$folder" Qt6Sql.dll
    [[ $(program_files "$folder") == "$program" && ! -e $folder/.kervan-eski ]]
    refuse_while_open "$1" "$target" "$folder/kervan-transfer.exe"
    mkdir "$WINEPREFIX/drive_c/gelen"
    echo 'aktarim = cari' >"$WINEPREFIX/drive_c/gelen.ini"
    refuse_while_open "$1" "$target" "$folder/kervan-aktar.exe" izle 'C:\gelen' --tarif 'C:\gelen.ini' \
        --hedef "$target\\logo xml\\"
    install_into "$1" "$beside" # only begins alike, and takes the entries over
    uninstall "$folder"
    [[ $(count_links) == 1 ]]
    uninstall "$WINEPREFIX/drive_c/${beside:3}"
    [[ $(count_links) == 0 ]]
    install_into "$1" "$target"
    [[ $(count_links) == 2 ]]
    find "$WINEPREFIX/drive_c" -path '*/Start Menu/*' -name 'Kervan Transfer.lnk' -delete
    install_into "$1" "$target"
    [[ $(count_links) == 1 ]]
    while_kept "$folder" Qt6Sql.dll uninstall_meanwhile "$folder"
    [[ -e $folder/kaldir.exe && $(count_links) == 1 ]] # it can be called again
    uninstall "$folder"
    [[ $(count_links) == 0 ]]
    after=$(own_files "$folder")
    diff <(echo "$before") <(echo "$after")
    left=$(find "$folder" -name '*.exe' -o -name '*.dll' -o -name kilavuz)
    [[ -z $left ]] || { echo "Left behind: $left" >&2 && return 1; }
    echo "Installed twice and uninstalled; what was the user's own stayed: $(wc -l <<<"$after") files"
}

# Unpacked and started, as those do who install nothing: the first start lays out what it needs, and
# the second finds it.
wine_unzipped() { # ZIP
    local place="$WINEPREFIX/drive_c/Açılan yer" folder start since before=
    mkdir "$place"
    unzip -q "$1" -d "$place"
    folder=$(dirname "$(find "$place" -name kervan-transfer.exe)")
    [[ -f $folder/kervan-transfer.exe && ! -e $folder/data.dbs ]]
    for start in first second; do
        timeout 120 wine "$folder/kervan-transfer.exe" &
        since=$SECONDS
        until xwininfo -root -tree | grep '"Kervan Transfer' >/dev/null && [[ -s $folder/data.dbs ]]; do
            ((SECONDS - since < 60)) || { echo "The $start start shows no window" >&2 && return 1; }
            sleep 1
        done
        wine taskkill /im kervan-transfer.exe # asked to close, and not ended
        wait $!
        before=${before:-$(cd "$folder" && sha256sum ./*.dbs)}
        [[ $(cd "$folder" && sha256sum ./*.dbs) == "$before" ]]
    done
    [[ ! -e $folder/cokme-raporu.txt ]]
    [[ -d $folder/txt && -d "$folder/logo xml" && $(wc -l <<<"$before") == 3 ]]
    echo "Unpacked, started twice and closed: its databases and folders are laid out"
}

wine_test() { # PROGRAM INSTALLER ZIP
    set -o errtrace
    trap '((BASH_SUBSHELL)) || echo "Failed at ${BASH_SOURCE[0]}:$LINENO: $BASH_COMMAND" >&2' ERR
    wine_start
    say "tests"
    wine_tests
    say "tour"
    wine_tour "$1"
    say "installer"
    wine_install "$2"
    say "zip"
    wine_unzipped "$3"
}
