#!/usr/bin/env bash
# Tries the Debian packages as a new user would: installs those for amd64 in a clean system, builds and runs the examples
# of the README with nothing else, purges them, and looks for what is left. Those for i386, if they were built, are
# unpacked and used where they lie. As root, or by sudo.
# usage: test.sh <folder of the packages>
set -euo pipefail
packages=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=../../tools/setup.sh
source "$here/../../tools/setup.sh"
base=$packages/system
root=$packages/root
asRoot=()
((EUID == 0)) || asRoot=(sudo)

inside() {
    "${asRoot[@]}" chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}
install() { inside apt-get -qy --no-install-recommends install "$@"; }
step() { echo "== $*"; }

# makeBase: a system with compilers, and in apt's cache all that the packages depend on: later runs need no network.
makeBase() {
    local codename mirror
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mirror=$(apt-get indextargets --format '$(REPO_URI)' "Created-By: Packages" "Codename: $codename" "Component: main" |
        head -1)
    "${asRoot[@]}" debootstrap --variant=minbase "$codename" "$root" "$mirror"
    apt-config dump | grep '^Acquire::' | "${asRoot[@]}" tee "$root/etc/apt/apt.conf.d/00acquire" >/dev/null
    install gcc g++ make cmake pkgconf
    putPackages
    install --download-only "${debs[@]/#//packages/}"
    "${asRoot[@]}" rm -rf "$root/packages"
    "${asRoot[@]}" mv "$root" "$base"
}
putPackages() {
    "${asRoot[@]}" mkdir -p "$root/packages"
    "${asRoot[@]}" cp "${debs[@]/#/$packages/}" "$root/packages"
}

# block LANGUAGE N: the Nth block of the README that is fenced as LANGUAGE.
block() {
    awk -v fence="\`\`\`$1" -v wanted="$2" '
        inBlock && /^```$/ { inBlock = 0; next }
        inBlock { if (right && n == wanted) print; next }
        /^```/ { inBlock = 1; right = $0 == fence; n += right }' "$here/../../README.md" | grep .
}

# What is there of a system, but for apt's caches and logs.
contents() {
    "${asRoot[@]}" find "$root" -xdev \( -path "$root/var/cache" -o -path "$root/var/log" -o -path "$root/var/lib/apt" \
        -o -path "$root/tmp" -o -path "$root/root" -o -path "$root/packages" \) -prune -o ! -name '*-old' -printf '%P %l\n' | sort
}

mapfile -t debs < <(cd "$packages" && ls -- *_amd64.deb *_all.deb)
((${#debs[@]} == 4)) || fail "There are not the four packages for amd64 in $packages: ./package builds them."
"${asRoot[@]}" rm -rf "$root"
if [[ ! -d $base ]]; then
    step "a clean system; what makes it speaks to $packages/system.log"
    makeBase >"$packages/system.log" 2>&1 # not by quietly, where a failure would not end it
fi
"${asRoot[@]}" cp -a "$base" "$root"
putPackages
contents >"$packages/before"

step "install"
quietly "$packages/install.log" install "${debs[@]/#//packages/}"

step "the examples of the README"
work=$root/srv/kvlm
"${asRoot[@]}" mkdir -m 777 "$work"
block cpp 1 >"$work/sums.cpp"
block c 1 >"$work/sums.c"
block '' 1 >"$work/expectedCpp"
block '' 2 >"$work/expectedC"
{
    printf 'cmake_minimum_required(VERSION 3.25)\nproject(sums LANGUAGES CXX)\nset(CMAKE_CXX_STANDARD 17)\n'
    printf 'add_executable(sums sums.cpp)\n'
    block cmake 1
} >"$work/CMakeLists.txt"
cat >"$work/try.sh" <<'SH'
set -eu
cd /srv/kvlm
flags=$(pkg-config --cflags --libs kvlm)
echo "pkg-config kvlm $(pkg-config --modversion kvlm): $flags"
g++ -std=c++17 -Wall -Wextra -Werror sums.cpp $flags -o sums_cpp
./sums_cpp | diff expectedCpp -
gcc -std=c99 sums.c $flags -o sums_c
./sums_c | diff expectedC -
cmake -B cmake >/dev/null
cmake --build cmake >/dev/null
cmake/sums | diff expectedCpp -
for example in /usr/share/doc/libkvlm-doc/examples/*.c; do
    gcc -std=c99 "$example" $flags -lm -o example
done
for example in /usr/share/doc/libkvlm-doc/examples/*.cpp; do
    g++ -std=c++17 "$example" $flags -o example
done
python3 - <<'PYTHON'
import kvlm as la
import numpy as np
points = np.random.default_rng(1).standard_normal((1000, 20, 3))
covariances = np.swapaxes(points, 1, 2) @ points
w, v = la.eigh(covariances)
assert np.allclose(w, np.linalg.eigvalsh(covariances)) and np.allclose(covariances @ v, v * w[:, None, :])
print("python:", w.shape, v.shape)
PYTHON
SH
inside sh /srv/kvlm/try.sh

step "the variant that the loader takes"
for level in $(variantsHere) x86-64-v2; do
    [[ $level == x86-64-v2 ]] && place= || place=glibc-hwcaps/$level/
    loaded=$(inside env LD_DEBUG=libs /lib64/ld-linux-x86-64.so.2 --glibc-hwcaps-mask "$level" /srv/kvlm/sums_c 2>&1 >/dev/null |
        sed -n 's/.*calling init: \(.*libkvlmw7.*\)/\1/p')
    [[ $loaded == /lib/x86_64-linux-gnu/${place}libkvlmw7.so.5.2 ]] || fail "On $level it is '$loaded'."
    echo "$level: $loaded"
done
best=$(variantsHere | head -1)
[[ -z $best ]] || inside env LD_DEBUG=libs /srv/kvlm/sums_c 2>&1 | grep "calling init.*/$best/libkvlmw7" >/dev/null ||
    fail "Unasked, the loader does not take $best."

step "purge"
names=("${debs[@]%%_*}")
quietly "$packages/purge.log" inside apt-get -qy purge "${names[@]}"
inside /srv/kvlm/sums_c >/dev/null 2>&1 && fail "The library is still found."
quietly "$packages/purge.log" inside apt-get -qy autoremove --purge
"${asRoot[@]}" rm -rf "$work"
diff "$packages/before" <(contents) || fail "This is left, or gone (<)."
"${asRoot[@]}" rm -rf "$root"

if compgen -G "$packages/*_i386.deb" >/dev/null; then
    step "i386"
    rm -rf "$packages/unpacked"
    for deb in "$packages"/*_i386.deb; do
        dpkg-deb -x "$deb" "$packages/unpacked"
    done
    block c 1 >"$packages/sums.c"
    library=$packages/unpacked/usr/lib/i386-linux-gnu
    libomp=$PWD/build/libomp-i386/usr/lib/i386-linux-gnu
    gcc -m32 -std=c99 "$packages/sums.c" "-I$packages/unpacked/usr/include" "-L$library" -lkvlmw7 \
        "-Wl,-rpath-link,$libomp" -o "$packages/sums"
    emulator=()
    /lib/ld-linux.so.2 --version >/dev/null 2>&1 || emulator=(qemu-i386)
    LD_LIBRARY_PATH=$library:$libomp "${emulator[@]}" "$packages/sums" | diff <(block '' 2) -
    echo "a program for i386 runs"
fi
echo "All tests passed."
