#!/usr/bin/env bash
# tests/packaging/bare.sh - the first commands of a user on a bare machine: a Debian root with the base system and git,
# made here. ./run demo and then ./run test, in another root the other way round, ./run install, the programs of the
# README; and what is said where packages cannot be had. Skipped when the files that decide it are those of the last
# time that it passed, and where a root cannot be made.
set -euo pipefail
cd "$(dirname "$0")/../.."
skip() { echo "bare machine: skipped, $1"; exit 0; }

deciding=$(git ls-files -co --exclude-standard run CMakePresets.json README.md cmake include tools examples tests/packaging \
    '*CMakeLists.txt')
stamp=${XDG_CACHE_HOME:-$HOME/.cache}/orvel/bare-$(sha256sum $deciding | sha256sum | cut -c1-32)
[ ! -e "$stamp" ] || skip "it passed with the same files"
[ "$(id -u)" -eq 0 ] || skip "only root can make one"
command -v debootstrap >/dev/null || skip "there is no debootstrap"
release=bookworm
mirror=$(apt-get indextargets --format '$(RELEASE) $(SITE)' 'Created-By: Packages' 2>/dev/null |
    sed -n "s/^$release //p" | head -n 1)
[ -n "$mirror" ] || skip "apt knows no mirror of $release"

room=$(mktemp -d)
trap 'rm -rf --one-file-system "$room"' EXIT
step() { printf 'bare machine, %3d s: %s\n' "$SECONDS" "$1"; }
fail() { echo "bare machine: $1"; tail -n 60 "$room/log"; exit 1; }

# inside ROOT COMMAND: in mount and process spaces of its own, so that nothing of it outlives the command.
inside() {
    unshare --mount --pid --fork --kill-child ${isolated:-} bash -c '
        mount -t proc proc "$1/proc" && mount --rbind /dev "$1/dev" &&
        exec chroot $3 "$1" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
            http_proxy="${http_proxy:-}" https_proxy="${https_proxy:-}" \
            CCACHE_DIR=/opt/ccache/cache CCACHE_COMPILERCHECK=content CCACHE_MAXSIZE=5G $4 \
            bash -c "cd /root/orvel && $2"' inside "$1" "$2" "${user:-}" "${objects:-}" >"$room/log" 2>&1
}

step "making the root"
debootstrap --variant=minbase --include=git $release "$room/base" "$mirror" >"$room/log" 2>&1 || skip "debootstrap fails"
apt-config dump | grep -E '^Acquire::https?::' >"$room/base/etc/apt/apt.conf.d/90mirror" || true
if [ -d /etc/apt/auth.conf.d ]; then cp -r /etc/apt/auth.conf.d "$room/base/etc/apt/"; fi
mkdir "$room/base/root/orvel"
git ls-files -co --exclude-standard -z | tar -c --null -T - | tar -x -C "$room/base/root/orvel"
chmod 755 "$room/base/root"
inside "$room/base" true || skip "nothing can be mounted"

step "without root, without network"
refused() { # WHAT: ./run demo ends at once and names the line to type
    ! inside "$room/base" "./run demo" || fail "./run demo $1 succeeds"
    grep -q '^    apt-get update && apt-get install -y .*g++' "$room/log" || fail "./run demo $1 does not say what to type"
    ! grep -q configuring "$room/log" || fail "./run demo $1 begins to build"
}
user=--userspec=nobody refused "without root"
isolated=--net refused "without network"

# The second root takes compiled objects over from the first, which compiles them all itself.
if command -v ccache >/dev/null; then
    mkdir -p "$room/base/opt/ccache/lib" "$room/base/opt/ccache/bin"
    cp "$(command -v ccache)" "$room/base/opt/ccache/bin/ccache"
    ldd "$(command -v ccache)" | grep -o '/[^ ]*' | xargs cp -Lt "$room/base/opt/ccache/lib"
    printf '#!/bin/sh\nexec /opt/ccache/lib/ld-linux-x86-64.so.2 --library-path /opt/ccache/lib /opt/ccache/bin/ccache "$@"\n' \
        >"$room/base/opt/ccache/launch"
    chmod +x "$room/base/opt/ccache/launch"
    objects="CMAKE_CXX_COMPILER_LAUNCHER=/opt/ccache/launch CMAKE_C_COMPILER_LAUNCHER=/opt/ccache/launch"
fi
rm -rf "$room/base/root/orvel/out"
cp -a "$room/base" "$room/second"

expect() { # ROOT COMMAND FILE: the command passes and leaves the file
    step "$2"
    inside "$1" "$2" || fail "$2 fails"
    ls "$1"$3 >/dev/null || fail "$2 leaves no $3"
}
expect "$room/base" "./run demo" "/root/orvel/out/demo/index.html"
step "the demo ends; downloads and installation of packages are in this time"
expect "$room/base" "./run test" "/root/orvel/build/release/tests/frame_tests"
expect "$room/base" "cd /tmp && /root/orvel/run install mine" "/tmp/mine/lib*/liborvel.so"
grep -q 'LD_LIBRARY_PATH=/tmp/mine/lib' "$room/log" || fail "install does not say how a program finds the library"
expect "$room/base" "./run install" "/usr/local/lib/liborvel.so"
expect "$room/base" "apt-get install -y --no-install-recommends pkg-config python3-numpy && mkdir /tmp/first &&
    tests/packaging/readme.py /tmp/first" "/tmp/first/a.out"
tail -n 1 "$room/log"
cp -a "$room/base/opt/." "$room/second/opt/"
cp -a "$room/base/var/cache/apt/archives/." "$room/second/var/cache/apt/archives/"
expect "$room/second" "./run test" "/root/orvel/build/release/tests/frame_tests"
expect "$room/second" "./run demo" "/root/orvel/out/demo/index.html"
if ls out/packages/*.deb >/dev/null 2>&1; then
    cp out/packages/*.deb "$room/second/root/"
    expect "$room/second" "apt-get install -y --no-install-recommends pkg-config /root/*.deb && mkdir /tmp/first &&
        PKG_CONFIG_PATH=/usr/lib/pkgconfig tests/packaging/readme.py /tmp/first && orvel report --quick /tmp/report.html &&
        orvel explain LSARG 1" "/usr/share/man/man3/lsarg.3orvel"
fi

mkdir -p "$(dirname "$stamp")"
touch "$stamp"
step "both commands in both orders, installation, packages and the programs of the README work"
