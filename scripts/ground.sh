# shellcheck shell=bash
# Sourced by ./run, ./test and ./package: where the tree is, what must be installed, how a preset is built.
# All of them work from any folder, as root, with sudo, and as a user who may use sudo.

root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
cd "$root" || exit
export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}

run_packages=(g++ cmake ninja-build ccache qt6-base-dev libgl-dev libsqlite3-dev libshp-dev
    libzip-dev libcups2-dev fontconfig fonts-liberation)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev clang clang-format clang-tidy
    libclang-rt-dev poppler-utils cups-daemon cups-client)
cross_packages=(g++-mingw-w64-x86-64-posix)
windows_packages=(libz-mingw-w64-dev qt6-base-dev-tools dpkg-dev tcl nsis zip)
debian_packages=(dpkg-dev file gzip lintian desktop-file-utils appstream)

say() { printf '%s\n' "$*"; }

# What a command builds with sudo belongs to the one who called it, or the next call without sudo
# could not write there.
give_back() {
    if [[ $EUID -eq 0 && -n ${SUDO_UID:-} && -d build ]]; then
        chown -R "$SUDO_UID:${SUDO_GID:-$SUDO_UID}" build
    fi
}
trap give_back EXIT

mkdir -p build
if [[ ! -w build ]]; then
    say "$root/build belongs to another user; remove it, or call again with sudo." >&2
    exit 1
fi

as_root() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    elif [[ -t 0 ]]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

# The given packages that are not installed, one a line.
missing_packages() {
    local installed
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
        sed -n 's/^installed //p' || true)
    comm -13 <(sort -u <<<"$installed") <(printf '%s\n' "$@" | sort -u)
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -y \
        -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@"
}

# Asks the network only when something is missing. A package that this release has under no such
# name is left out: the build says what it cannot find, and a check without its tool is skipped.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "No apt here. Needed, under the names Debian gives them: $*"
        return 0
    fi
    local missing=() known=() package
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    say "Installing: ${missing[*]}"
    if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
        say "Only root can install these packages, and there is no sudo: ${missing[*]}" >&2
        exit 1
    fi
    apt_get update >build/install.log 2>&1 || true
    for package in "${missing[@]}"; do
        if apt-cache show "$package" >/dev/null 2>&1; then
            known+=("$package")
        else
            say "apt knows no package $package here; going on without it."
        fi
    done
    if ((${#known[@]})) && ! apt_get install --no-install-recommends "${known[@]}" \
        >>build/install.log 2>&1; then
        tail -n 20 build/install.log >&2
        say "Could not install: ${known[*]}" >&2
        exit 1
    fi
}

# build_preset <configure preset> [<build preset>]
build_preset() {
    local preset=$1 log=build/$1.configure.log
    if [[ ! -f build/$preset/build.ninja || CMakePresets.json -nt build/$preset/build.ninja ]]; then
        if ! cmake --preset "$preset" >"$log" 2>&1; then
            cat "$log" >&2
            return 1
        fi
    fi
    cmake --build --preset "${2:-$preset}"
}
