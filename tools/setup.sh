# shellcheck shell=bash
# What run, test, fuzz, bench and package share: the packages that each needs, installing them, configuring and building.
# To be sourced, from the root of the project.

runPackages=(g++ cmake ninja-build libomp5-14 liblapack-dev)
# shellcheck disable=SC2034 # these are for the others
{
    docsPackages=(doxygen graphviz)
    pythonPackages=("${runPackages[@]}" python3-dev python3-numpy python3-scipy python3-matplotlib python3-pytest
        python3-venv mypy pybind11-dev)
    testPackages=("${runPackages[@]}" libomp-14-dev g++-multilib clang qemu-user googletest clang-format-14 pkgconf ccache libeigen3-dev)
    fuzzPackages=("${testPackages[@]}" libclang-rt-14-dev)
    packagePackages=("${runPackages[@]}" debhelper dh-python python3-dev pybind11-dev lintian ccache)
    packageTestPackages=(debootstrap pkgconf g++-multilib qemu-user)
    packageI386Packages=("${packagePackages[@]}" g++-multilib binutils-i686-linux-gnu)
    benchPackages=("${runPackages[@]}" pkgconf libbenchmark-dev libeigen3-dev libglm-dev libcglm-dev libxsmm-dev gnuplot-nox)
}

fail() {
    echo "$*" >&2
    exit 1
}

# installPackages NAME...: installs those that are missing.
installPackages() {
    command -v dpkg-query >/dev/null || fail "This needs a Debian system: dpkg-query was not found."
    local missing asRoot=()
    missing=$(comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort -u))
    [[ -n $missing ]] || return 0
    mapfile -t missing <<<"$missing"
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "These packages are missing, install them as root: ${missing[*]}"
        asRoot=(sudo)
    fi
    asRoot+=(env DEBIAN_FRONTEND=noninteractive)
    echo "Installing ${missing[*]}"
    mkdir -p build
    # The lists may be old or absent; a failing update matters only if then a package can't be had.
    "${asRoot[@]}" apt-get -q update >build/setup.log 2>&1 </dev/null || true
    "${asRoot[@]}" apt-get -qy --no-install-recommends install "${missing[@]}" >>build/setup.log 2>&1 </dev/null ||
        fail "These packages could not be installed (see build/setup.log): ${missing[*]}"
}

# The OpenMP runtime for i386 can't be installed beside the one of x86_64: it is unpacked into build/libomp-i386, by an
# apt that knows only i386 and has its lists and its cache below build/, so that the machine's stay as they are.
unpackLibompI386() {
    local target=build/libomp-i386 work=$PWD/build/libomp-i386.new log=build/libomp-i386.log
    [[ ! -e $target/usr/lib/i386-linux-gnu/libomp.so.5 ]] || return 0
    echo "Unpacking libomp5-14:i386 into $target"
    rm -rf "$target" "$work"
    mkdir -p "$work"/{lists,cache}/partial "$work/cache/archives/partial" "$work/tree"
    : >"$work/status"
    cat >"$work/apt.conf" <<EOF
#clear APT::Update::Pre-Invoke;
#clear APT::Update::Post-Invoke;
#clear APT::Update::Post-Invoke-Success;
#clear APT::Architectures;
APT::Architecture "i386";
APT::Architectures { "i386"; };
Dir::State "$work";
Dir::State::status "$work/status";
Dir::Cache "$work/cache";
EOF
    # Run by root, apt would fetch as a user of its own, who may have no way into this folder.
    ((EUID != 0)) || echo 'APT::Sandbox::User "root";' >>"$work/apt.conf"
    # The index of one suite may be broken while the package can be had from another.
    apt-get -c "$work/apt.conf" -q update >"$log" 2>&1 </dev/null || true
    (cd "$work" && apt-get -c apt.conf -q download libomp5-14:i386) >>"$log" 2>&1 </dev/null ||
        fail "The package libomp5-14:i386 could not be downloaded (see $log)."
    dpkg-deb -x "$work"/libomp5-14_*_i386.deb "$work/tree"
    mv "$work/tree" "$target"
    rm -rf "$work"
}

# variantsHere: the variants of the library that this processor can run, as its dynamic loader tells.
variantsHere() {
    local loader=/lib64/ld-linux-x86-64.so.2
    [[ ! -x $loader ]] || "$loader" --help | sed -n 's/^ *\(x86-64-v[34]\) (supported.*/\1/p'
}

# quietly LOG COMMAND...: shows the output only if the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null || {
        cat "$log" >&2
        fail "This failed: $*"
    }
}

# useCcache FOLDER: where there is ccache, what was compiled before is not compiled again, wherever the folder lies.
useCcache() {
    ! command -v ccache >/dev/null || export CCACHE_BASEDIR=$1 CCACHE_NOHASHDIR=1 \
        CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
}

# configure PRESET [-DNAME=VALUE]...
configure() {
    useCcache "$PWD"
    quietly "build/$1.configure.log" cmake --preset "$@"
}

# buildPython [VARIANT]...: the package into build/x86_64/python, with the library that it stands on.
buildPython() {
    configure x86_64 -DKVLM_BUILD_PYTHON=ON -DPython3_EXECUTABLE=/usr/bin/python3 -DKVLM_VARIANTS="$(IFS=';' && echo "$*")"
    quietly build/x86_64.build.log cmake --build build/x86_64 --target kvlm_core
    export PYTHONPATH=$PWD/build/x86_64/python PYTHONDONTWRITEBYTECODE=1
}
