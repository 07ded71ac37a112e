# What ./run and ./check share: progress lines, the packages that a build and the tests need, and the build itself.

BRINDLE_INSTALL=${BRINDLE_INSTALL:-yes}

build_packages=(g++ cmake ninja-build bison pkg-config libicu-dev libexpat1-dev libtomlplusplus-dev libcli11-dev
                nlohmann-json3-dev libsqlite3-dev)
test_packages=(libgtest-dev libgmock-dev clang-format python3)
coverage_packages=(clang libclang-rt-14-dev llvm)
bench_packages=(libbenchmark-dev libctemplate-dev libcsv-dev libfmt-dev python3)
fuzz_packages=(clang libclang-rt-14-dev)

say() { printf -- '-- %s\n' "$*"; }

# install_packages PACKAGE...: installs those that are missing. With --no-install it only says which.
install_packages() {
    local package missing=() as_root=(env DEBIAN_FRONTEND=noninteractive)
    if ! command -v dpkg-query >/dev/null; then
        say "no Debian packages here: nothing is installed, and the build tells what is missing"
        return 0
    fi
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$BRINDLE_INSTALL" = no ]; then
        printf '%s: missing packages: %s\n' "$0" "${missing[*]}" >&2
        return 1
    fi
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            printf '%s: without sudo only root can install the missing packages: %s\n' "$0" "${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo "${as_root[@]}")
    fi
    say "install ${missing[*]}"
    "${as_root[@]}" apt-get update -qq || say "the package lists cannot be fetched anew: installing by those that are there"
    if ! "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"; then
        printf '%s: apt-get cannot install the missing packages: %s\n' "$0" "${missing[*]}" >&2
        return 1
    fi
}

# Temporary files of compilers and tests lie in the project's folder from now on. Not sooner: apt-get hands its own to a
# user who may not read there.
keep_temporary_files_here() {
    export TMPDIR=$PWD/build/tmp TEST_TMPDIR=$PWD/build/tmp
    mkdir -p "$TMPDIR"
}

# build_preset PRESET TESTS [TARGET...]: configures if need be, with the tests (ON) or without (OFF: only where the tree is
# new), then builds what has changed.
build_preset() {
    local preset=$1 tests=$2 tree=build/$1 home
    shift 2
    # A tree that was copied or moved with the project would go on building the sources at its former place.
    if [ -f "$tree/CMakeCache.txt" ]; then
        home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$tree/CMakeCache.txt")
        if ! [ "$home" -ef . ]; then
            say "$tree was made for $home: it is made anew"
            find "$tree" -mindepth 1 -maxdepth 1 ! -name findings -exec rm -rf {} +
        fi
    fi
    if [ ! -f "$tree/build.ninja" ] ||
        { [ "$tests" = ON ] && ! grep -q '^BRINDLE_BUILD_TESTS:BOOL=ON' "$tree/CMakeCache.txt"; }; then
        mkdir -p "$tree"
        if ! cmake --preset "$preset" "-DBRINDLE_BUILD_TESTS=$tests" >"$tree/configure.log" 2>&1; then
            cat "$tree/configure.log" >&2
            return 1
        fi
    fi
    cmake --build --preset "$preset" ${*:+--target "$@"}
}
