# shellcheck shell=bash
# Sourced by ./package: the setup and the zip for Windows.

source packaging/windows/libraries.sh

readonly build=$root/build/package-windows
readonly name=OstrelPayroll-$(version)
readonly staged=$build/$name

# The pages are the same on every system; a program of this one makes them.
make_pages() {
    [[ -f build/release/build.ninja ]] || cmake --preset release
    cmake --build build/release --target manual
}

cross_build() {
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DOSTREL_WINDOWS_LIBRARIES="$libraries" -DCMAKE_PREFIX_PATH="$libraries" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake"
    cmake --build "$build" --target OstrelPayroll
}

# The program with all that must lie beside it.
stage_files() {
    local library compiler
    compiler=$(dirname "$("$cross-gcc-posix" -print-libgcc-file-name)")
    rm -rf "$staged"
    mkdir -p "$staged/platforms"
    cp "$build/OstrelPayroll.exe" build/release/{manual,promises,install}.html "$staged/"
    cp LICENSE "$staged/LICENSE.txt"
    for library in Qt6Core Qt6Gui Qt6Widgets Qt6PrintSupport; do
        cp "$libraries/bin/$library.dll" "$staged/"
    done
    cp "$(find "$libraries" -name qwindows.dll | head -n 1)" "$staged/platforms/"
    cp "$compiler"/{libstdc++-6,libgcc_s_seh-1}.dll "/usr/$cross/lib/libwinpthread-1.dll" "$staged/"
    "$cross-strip" "$staged"/*.exe "$staged"/*.dll "$staged"/platforms/*.dll
}

# The uninstaller takes away these files and no other.
list_removals() {
    (cd "$staged" && find . -type f -printf "Delete \"\$INSTDIR\\\\%P\"\n" | tr / '\\' &&
        find . -mindepth 1 -type d -printf "RMDir \"\$INSTDIR\\\\%P\"\n") >"$build/removals.nsh"
}

make_setup() {
    list_removals
    makensis -V2 -DVERSION="$(version)" -DFROM="$staged" -DTO="$packages/$name-setup.exe" \
        -DREMOVALS="$build/removals.nsh" packaging/windows/setup.nsi
    rm -f "$packages/$name-windows.zip"
    (cd "$build" && zip -q -r "$packages/$name-windows.zip" "$name")
}

make_package() {
    local library
    install_packages "${run_packages[@]}" "${cross_packages[@]}" "${windows_packages[@]}"
    for library in sqlite3 libzip postgis qt6-base; do need_library "$library"; done
    say "Building for Windows (the log is $build.log)"
    set +e
    (set -e; make_pages; cross_build; stage_files; make_setup) >"$build.log" 2>&1
    local code=$?
    set -e
    ((code == 0)) || { tail -n 30 "$build.log" >&2; return 1; }
}
