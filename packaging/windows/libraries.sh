# shellcheck shell=bash
# Sourced by ./package: builds for Windows what the program stands on, from the distribution's
# sources, once. What is built lies in the user's cache, so that neither a clean tree nor another
# copy of the sources has to wait for it again; OSTREL_CACHE names another place.

readonly windows=$root/packaging/windows
readonly cache=${OSTREL_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/ostrel-payroll}
readonly libraries=$cache/windows
readonly toolchain=$windows/mingw.cmake
readonly cross=x86_64-w64-mingw32

version_of() { awk -v name="$1" '$1 == name { print $2 }' "$windows/versions"; }

# apt with lists of its own, made from the machine's: they have the sources, too, whether the
# machine's do or not, and nothing of the machine is changed.
source_apt() {
    local own=$cache/apt line
    if [[ ! -e $own/apt.conf ]]; then
        mkdir -p "$own"/{parts,lists/partial,archives/partial}
        find /etc/apt/sources.list.d -name '*.sources' -exec sh -c '
            for file; do sed "s/^Types:.*/Types: deb-src/" "$file" >"$0/$(basename "$file")"; done
            ' "$own/parts" {} +
        find /etc/apt -maxdepth 2 -name '*.list' -exec sed -n 's/^deb /deb-src /p' {} + \
            >"$own/parts/machine.list"
        for line in "Dir::Etc::sourcelist \"/dev/null\";" "Dir::Etc::sourceparts \"$own/parts\";" \
            "Dir::State::lists \"$own/lists\";" "Dir::Cache \"$own\";"; do
            printf '%s\n' "$line"
        done >"$own/apt.conf.new"
        APT_CONFIG=$own/apt.conf.new apt-get -qq -o APT::Sandbox::User=root update
        mv "$own/apt.conf.new" "$own/apt.conf"
    fi
    APT_CONFIG=$own/apt.conf apt-get -qq -o APT::Sandbox::User=root "$@"
}

# fetch <source package>: its sources, with the distribution's patches, in $cache/source/<package>.
fetch() {
    local name=$1 version folder=$cache/source/$1
    version=$(version_of "$name")
    rm -rf "$folder" "$folder.parts"
    mkdir -p "$folder.parts"
    if ! (cd "$folder.parts" && source_apt source "$name=$version") >"$cache/$name.log" 2>&1; then
        tail -n 5 "$cache/$name.log" >&2
        say "The sources of $name $version cannot be had here; $windows/versions names the versions." >&2
        return 1
    fi
    mv "$folder.parts/$name"-*/ "$folder"
    rm -rf "$folder.parts"
}

# cross_cmake <source folder> <name> <option>...: configures, builds and installs.
cross_cmake() {
    local source=$1 build=$cache/build/$2 launcher=()
    shift 2
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake -S "$source" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DOSTREL_WINDOWS_LIBRARIES="$libraries" -DCMAKE_INSTALL_PREFIX="$libraries" \
        -DCMAKE_BUILD_TYPE=Release "${launcher[@]}" "$@"
    cmake --build "$build"
    cmake --install "$build" --strip
}

# Shared, as the licence of Qt wants it to be replaceable. The distribution's own tools run here. Off
# is what the window does not use; dynamicgl and tabletevent do not compile for this system, and
# direct2d brings the system's way of drawing letters.
build_qt6_base() {
    local off=() feature
    for feature in sql network dbus opengl dynamicgl vulkan concurrent xml pkg_config tabletevent \
        sessionmanager; do
        off+=("-DFEATURE_$feature=OFF")
    done
    cross_cmake "$1" qt6-base -DBUILD_SHARED_LIBS=ON -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake" \
        -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TOOLS_BY_DEFAULT=OFF \
        -DFEATURE_system_zlib=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF \
        -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_pcre2=OFF \
        -DFEATURE_system_doubleconversion=OFF "${off[@]}"
}

build_sqlite3() {
    (cd "$1" && ./configure --disable-tcl --disable-readline && make sqlite3.c sqlite3.h)
    "$cross-gcc-posix" -O2 -DSQLITE_THREADSAFE=1 -c "$1/sqlite3.c" -o "$1/sqlite3.o"
    "$cross-ar" rcs "$libraries/lib/libsqlite3.a" "$1/sqlite3.o"
    cp "$1"/sqlite3{,ext}.h "$libraries/include/"
}

build_libzip() {
    cross_cmake "$1" libzip -DBUILD_SHARED_LIBS=OFF -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF \
        -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF -DENABLE_ZSTD=OFF \
        -DENABLE_OPENSSL=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF -DENABLE_COMMONCRYPTO=OFF \
        -DENABLE_WINDOWS_CRYPTO=OFF
}

# The dBase half of shapelib, which postgis carries in its loader: not every archive that keeps
# shapelib's packages keeps its sources.
build_postgis() {
    local part loader=$1/loader
    for part in dbfopen safileio; do
        "$cross-gcc-posix" -O2 -c "$loader/$part.c" -o "$loader/$part.o"
    done
    "$cross-ar" rcs "$libraries/lib/libshp.a" "$loader"/{dbfopen,safileio}.o
    cp "$loader/shapefil.h" "$libraries/include/"
}

build_googletest() { cross_cmake "$1" googletest -DBUILD_SHARED_LIBS=OFF; }

# need_library <source package>: built, unless this version was built before in this very way. A build
# that was broken off goes on where it was.
need_library() {
    local name=$1 build=build_${1//-/_} id made begun code=0 start=$SECONDS
    id=$name-$(version_of "$name")-$(declare -f "$build" cross_cmake | sha256sum | cut -c 1-16)
    made=$cache/done/$id begun=$cache/begun/$id
    [[ ! -e $made ]] || return 0
    say "Building $name $(version_of "$name") for Windows (the log is $cache/$name.log)"
    mkdir -p "$cache"/{source,build,begun,done} "$libraries"/{include,lib}
    if [[ ! -e $begun ]]; then
        rm -rf "$cache/build/$name" "$cache/begun/$name"-*
        fetch "$name"
        touch "$begun"
    fi
    # No "if" around it: within one, bash would go on behind a command that failed.
    set +e
    (set -e; "$build" "$cache/source/$name") >>"$cache/$name.log" 2>&1
    code=$?
    set -e
    if ((code != 0)); then
        tail -n 30 "$cache/$name.log" >&2
        say "Could not build $name." >&2
        return 1
    fi
    rm -rf "$cache/source/$name" "$cache/build/$name" "$begun" "$cache/done/$name"-*
    touch "$made"
    say "   $name: $((SECONDS - start)) s"
}
