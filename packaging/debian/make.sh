# shellcheck shell=bash
# Sourced by ./package: the Debian package, and the checks that it must stand.

readonly build=$root/build/package-debian
readonly deb=$packages/ostrel-payroll_$(version)_$(dpkg --print-architecture).deb

# Everything that is the distribution's custom for a program: how it is compiled and linked.
configure_package() {
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON \
        -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
        -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS) -Wl,-z,now"
}

check_changelog() {
    local named
    named=$(dpkg-parsechangelog -l packaging/debian/changelog -S Version)
    if [[ $named != "$(version)" ]]; then
        say "packaging/debian/changelog begins with $named, the project is $(version)." >&2
        return 1
    fi
}

# What the desktop's own tools say of the entries, and the archive's of the package.
check_package() {
    desktop-file-validate packaging/debian/*.desktop
    appstreamcli validate --no-net packaging/debian/*.metainfo.xml
    lintian --allow-root --fail-on error --info --tag-display-limit 0 "$deb"
}

make_package() {
    install_packages "${run_packages[@]}" "${debian_packages[@]}"
    check_changelog
    say "Building the Debian package (the log is $build.log)"
    rm -f "$packages"/*.deb
    if ! { configure_package && cmake --build "$build" --target OstrelPayroll manual &&
        (cd "$build" && cpack -G DEB); } >"$build.log" 2>&1; then
        tail -n 30 "$build.log" >&2
        return 1
    fi
    rm -rf "$packages/_CPack_Packages"
    check_package
}
