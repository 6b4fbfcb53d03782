# shellcheck shell=bash
# Sourced by ./windows: the libraries of the Windows program, built once from Debian's sources.
#
# They stand in a folder of the cache whose name is a digest of this recipe, of the versions below
# and of the compiler's; a folder that is there is finished. KERVAN_WINDOWS_CACHE moves the cache.

windows_sources=(qt6-base=6.4.2+dfsg-10 sqlite3=3.40.1-2+deb12u2 libzip=1.7.3-1
    libxlsxwriter=1.1.4-2 benchmark=1.7.1-1)
windows_recipe=packaging/windows
windows_cache=${KERVAN_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kervan-windows}
windows_key=$({
    cat "$windows_recipe/toolchain.sh" "$windows_recipe/mingw.cmake"
    dpkg-query -W -f '${Package} ${Version}\n' g++-mingw-w64-x86-64-posix libz-mingw-w64-dev \
        qt6-base-dev 2>/dev/null || true
} | sha256sum | cut -c 1-16)
windows_libraries=$windows_cache/$windows_key
export KERVAN_WINDOWS_LIBRARIES=$windows_libraries

# Without a list of sources on the machine, and without touching it.
fetch_sources() { # FOLDER
    local folder=$1 list
    mkdir -p "$folder/apt/lists/partial" "$folder/apt/archives/partial"
    list=$folder/apt/sources.list
    for suite in debian/bookworm debian/bookworm-updates debian-security/bookworm-security; do
        echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
            "http://deb.debian.org/${suite%/*} ${suite#*/} main"
    done >"$list"
    local apt=(apt-get -q -o "Dir::Etc::SourceList=$list" -o Dir::Etc::SourceParts=/dev/null
        -o "Dir::State::Lists=$folder/apt/lists" -o "Dir::Cache=$folder/apt"
        -o APT::Sandbox::User=)
    "${apt[@]}" update
    (cd "$folder" && "${apt[@]}" source --download-only "${windows_sources[@]}")
    local description name
    for description in "$folder"/*.dsc; do
        name=$(basename "$description")
        dpkg-source --no-check -x "$description" "$folder/${name%%_*}"
    done
}

cross_build() { # SOURCE BUILD [CMAKE ARGUMENTS]
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/$windows_recipe/mingw.cmake" \
        -DCMAKE_INSTALL_PREFIX="$unfinished" "${@:3}"
    cmake --build "$2"
    cmake --install "$2"
}

# Debian's qt6-base comes without SQLite, and its sqlite3 without the one file that holds it all.
build_sqlite() { # SOURCE
    mkdir -p "$1/windows" "$unfinished"/{bin,lib,include}
    (cd "$1/windows" && ../configure --disable-tcl && make sqlite3.c)
    x86_64-w64-mingw32-gcc-posix -O2 -shared -static-libgcc -DSQLITE_ENABLE_COLUMN_METADATA \
        -DSQLITE_OMIT_LOAD_EXTENSION "$1/windows/sqlite3.c" -o "$unfinished/bin/sqlite3.dll" \
        -Wl,--export-all-symbols,--out-implib,"$unfinished/lib/libsqlite3.dll.a"
    cp "$1/windows/sqlite3.h" "$unfinished/include/"
}

# Only what the program, its tests and its tour use, and without asking Direct3D at the first window
# which screen suits OpenGL: nothing here draws with it, and the answer takes longer than the window.
build_qt() { # SOURCE BUILD
    local off=() feature window=$1/src/plugins/platforms/windows/qwindowswindow.cpp
    grep -q 'GpuDescription::detect().gpuSuitableScreen;' "$window"
    sed -i 's/GpuDescription::detect().gpuSuitableScreen;/QString();/' "$window"
    for feature in androiddeployqt brotli concurrent cpp_winrt dbus direct2d1_1 dynamicgl gif glib \
        gssapi icu jpeg networklistmanager opengl openssl pkg_config printsupport \
        schannel sql_mysql sql_odbc sql_psql ssl tabletevent textmarkdownwriter textodfwriter \
        vulkan xml zstd; do
        off+=("-DFEATURE_$feature=OFF")
    done
    cross_build "$1" "$2" -DBUILD_SHARED_LIBS=ON -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF \
        -DFEATURE_sql_sqlite=ON -DFEATURE_system_sqlite=ON -DFEATURE_system_zlib=ON "${off[@]}"
}

build_libzip() { # SOURCE BUILD
    cross_build "$1" "$2" -DBUILD_SHARED_LIBS=ON -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF \
        -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF \
        -DENABLE_MBEDTLS=OFF -DENABLE_OPENSSL=OFF -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_BZIP2=OFF \
        -DENABLE_LZMA=OFF
}

# The tests write workbooks and the benchmarks measure; the program needs neither.
build_of_tests() { # SOURCES
    cross_build "$1/libxlsxwriter" "$1/build-xlsxwriter" -DBUILD_SHARED_LIBS=ON
    cross_build "$1/benchmark" "$1/build-benchmark" -DGIT_VERSION=1.7.1 -DBENCHMARK_ENABLE_TESTING=OFF \
        -DBENCHMARK_ENABLE_WERROR=OFF
}

# The words under which each library may be passed on, for the folder "lisanslar".
keep_licences() { # SOURCES
    local source
    mkdir -p "$unfinished/licences"
    for source in qt6-base sqlite3 libzip; do
        cp "$1/$source/debian/copyright" "$unfinished/licences/$source.txt"
    done
    cp /usr/share/doc/libz-mingw-w64/copyright "$unfinished/licences/zlib.txt"
    cp /usr/share/doc/gcc-mingw-w64-base/copyright "$unfinished/licences/gcc.txt"
    cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$unfinished/licences/mingw-w64.txt"
    # The texts that those name.
    cp /usr/share/common-licenses/{Apache-2.0,Artistic,GFDL-1.2,GFDL-1.3,GPL-2,GPL-3,LGPL-2,LGPL-2.1,LGPL-3} \
        "$unfinished/licences/"
    {
        echo "Kervan Transfer bu kitaplıkları ayrı DLL dosyaları olarak taşır. Değiştirilen tek satır,"
        echo "qt6-base içinde src/plugins/platforms/windows/qwindowswindow.cpp dosyasındadır:"
        echo "GpuDescription::detect().gpuSuitableScreen yerine QString() yazıldı."
        echo "Kaynakları Debian 12 paketleridir (https://sources.debian.org):"
        printf '  %s\n' "${windows_sources[@]:0:3}"
        dpkg-query -W -f '  ${source:Package}=${source:Version}\n' libz-mingw-w64-dev \
            g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev
    } >"$unfinished/licences/OKUBENI.txt"
}

windows_toolchain() {
    [[ -d $windows_libraries ]] && return
    mkdir -p "$windows_cache"
    exec {cache_lock}>"$windows_cache/lock" # one builds, others wait for it
    flock "$cache_lock"
    [[ -d $windows_libraries ]] && return
    echo "Building the libraries of the Windows program once, into $windows_libraries"
    local work=$windows_cache/work unfinished=$windows_cache/unfinished
    rm -rf "$work" "$unfinished"
    mkdir -p "$work" "$unfinished"
    fetch_sources "$work"
    KERVAN_WINDOWS_LIBRARIES=$unfinished
    build_sqlite "$work/sqlite3"
    build_libzip "$work/libzip" "$work/build-libzip"
    build_qt "$work/qt6-base" "$work/build-qt"
    build_of_tests "$work"
    KERVAN_WINDOWS_LIBRARIES=$windows_libraries
    keep_licences "$work"
    mv "$unfinished" "$windows_libraries"
    rm -rf "$work"
}
