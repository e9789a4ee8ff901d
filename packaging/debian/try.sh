# shellcheck shell=bash
# Sourced by ./package: a clean root of this machine's release, and in it what an administrator and a
# foreman do with the package, from the installation to the removal.

readonly clean=$root/build/clean-root
readonly clean_packages=(xvfb xauth xdotool sqlite3 poppler-utils imagemagick fonts-liberation)

# The bare system is kept packed, so that a second try need not fetch it again.
unpack_clean_root() {
    local codename mirror packed=$clean.tar
    codename=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    mirror=$(apt-get indextargets --format "\$(CODENAME) \$(COMPONENT) \$(REPO_URI)" \
        'Created-By: Packages' | awk -v wanted="$codename" '$1 == wanted && $2 == "main" { print $3; exit }')
    as_root rm -rf "$clean"
    if [[ ! -e $packed ]]; then
        say "Fetching a bare $codename"
        as_root debootstrap --variant=minbase "$codename" "$clean" "$mirror" >build/clean-root.log
        as_root tar -C "$clean" -cf "$packed" .
    else
        as_root mkdir -p "$clean"
        as_root tar -C "$clean" -xf "$packed"
    fi
}

# The machine's way to its archive, and what the try needs, in the root's folder try.
furnish_clean_root() {
    local disk=$root/build/try-disk
    as_root cp -a /etc/apt/sources.list.d /etc/apt/trusted.gpg.d "$clean/etc/apt/"
    [[ ! -e /etc/apt/sources.list ]] || as_root cp /etc/apt/sources.list "$clean/etc/apt/"
    as_root cp -a /usr/share/keyrings "$clean/usr/share/"
    as_root cp -L /etc/resolv.conf /etc/hosts "$clean/etc/"
    apt-config dump Acquire | as_root tee "$clean/etc/apt/apt.conf.d/00machine" >/dev/null
    cmake --build "$build" --target make_office_disk >>"$build.log"
    rm -rf "$disk"
    mkdir -p "$disk/tables" "$disk/disk"
    "$build/make_office_disk" sample/clients/1234 1234 "$disk/tables" "$disk/disk"
    as_root mkdir -p "$clean/try"
    as_root cp -r "$disk/disk" "$deb" packaging/debian/foreman.sh packaging/debian/administrator.sh "$clean/try/"
}

try_package() {
    install_packages debootstrap
    unpack_clean_root
    furnish_clean_root
    say "In a clean root:"
    # Processes and mounts of its own, which end with it.
    as_root unshare --mount --pid --fork --kill-child \
        chroot "$clean" /try/administrator.sh "$(basename "$deb")" "${clean_packages[@]}"
    as_root rm -rf "$clean"
    say "The package installs, works, upgrades and goes; the lines stay."
}
