#!/usr/bin/env bash
# SPDX-License-Identifier: MIT

# What a user of the Debian packages does in a bare system: installs them, uses the program, builds programs by every
# route, with the packages and with the sources, and removes them. Beside this script are `packages`, `sources`, `consumer`
# (a user's project) and `data` (documents).
#
# With an architecture as argument, the packages are first built for it, from the sources in `packages/quxml`, and then
# tried with a cross compiler and in qemu.
set -euxo pipefail
cd "$(dirname "$0")"
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
examples=/usr/share/doc/libquxml-dev/examples
architecture=${1-$(dpkg --print-architecture)}
compiler=c++
pkg_config=pkg-config
emulator=()
cmake_options=()

say() {
    echo "trial: $*"
}

install() {
    apt-get install --yes --no-install-recommends "$@"
}

run() {
    "${emulator[@]}" "$@"
}

# Runs a program and compares what it prints with a file.
check() {
    run "$2" | diff "$1" -
}

# Builds the packages for the architecture, except the documentation, which is the same for all.
cross_build() {
    install build-essential "crossbuild-essential-$architecture"
    apt-get build-dep --yes --no-install-recommends --arch-only --host-architecture "$architecture" \
        --build-profiles cross,nocheck ./packages/quxml
    (cd packages/quxml &&
        dpkg-buildpackage --host-arch "$architecture" --build-profiles=cross,nocheck --build=any --no-sign)
    rm -r packages/quxml
}

# Makes the rest of the trial use what is for the architecture.
choose_cross_tools() {
    local triplet processor
    triplet=$(dpkg-architecture --host-arch "$architecture" --query DEB_HOST_GNU_TYPE)
    processor=$(dpkg-architecture --host-arch "$architecture" --query DEB_HOST_ARCH_CPU)
    compiler=$triplet-g++
    pkg_config=$triplet-pkg-config
    emulator=("qemu-$processor")
    cmake_options=(-DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR="$processor" -DCMAKE_CXX_COMPILER="$compiler")
    install qemu-user
}

# Checks that the list of what a package contains has the checksum of an installed file.
lists() {
    local checksum
    checksum=$(sha256sum "$2" | cut -d ' ' -f 1)
    grep --fixed-strings "\"$checksum\"" "/usr/share/doc/$1/$1_$architecture.spdx.json"
}

needs_the_shared_library() {
    readelf --dynamic "$1" | grep -F "Shared library: [libquxml.so.1]"
}

quxml() {
    run /usr/bin/quxml "$@"
}

program() {
    install ./packages/libquxml1_*.deb ./packages/quxml_*.deb
    [[ " $(quxml --version) " == *" $(dpkg-query --show --showformat '${Version}' quxml) "* ]]
    [[ $(dpkg-query --show --showformat '${Depends}' libquxml1) == *"libxml2 (>= 2.9.10)"* ]]
    say "$(quxml --version), of $(dpkg-query --show --showformat '${Architecture}' quxml)"
    quxml format --canonical data/catalog.xml | diff data/catalog.formatted -
    [ "$(quxml query "/catalog/book[2]/title" data/catalog.xml)" = '<title lang="de">Grüße aus Köln</title>' ]
    lists quxml /usr/bin/quxml
    lists libquxml1 "$(realpath /usr/lib/*/libquxml.so.1)"
    gzip --decompress --stdout /usr/share/man/man1/quxml.1.gz | grep -w quxml
    bash -n /usr/share/bash-completion/completions/quxml
    head --lines=1 /usr/share/zsh/vendor-completions/_quxml | grep -x "#compdef quxml"
}

find_package() {
    cmake -S consumer -B find_package -Droute=find_package "${cmake_options[@]}"
    cmake --build find_package
    needs_the_shared_library find_package/main
    check consumer/main.out find_package/main
}

pkg_config() {
    eval "$compiler -std=c++11 consumer/main.cpp -o shared_main $($pkg_config --cflags --libs quxml)"
    needs_the_shared_library shared_main
    check consumer/main.out ./shared_main
}

pkg_config_static() {
    eval "$compiler -std=c++11 -static consumer/main.cpp -o static_main $($pkg_config --static --cflags --libs quxml)"
    readelf --dynamic static_main | grep -F "no dynamic section"
    check consumer/main.out ./static_main
}

with_sources() {
    cmake -S consumer -B "$1" -Droute="$1" -Dsources="$PWD/sources" "${cmake_options[@]}"
    cmake --build "$1" --parallel 2
    check consumer/main.out "$1/main"
    check consumer/extras.out "$1/extras"
}

add_subdirectory() {
    with_sources add_subdirectory
}

fetch_content() {
    with_sources fetch_content
}

example() {
    "$compiler" -std=c++11 "$examples/quickstart.cpp" -o quickstart -lquxml
    check "$examples/quickstart.out" ./quickstart
}

documentation() {
    install ./packages/libquxml-doc_*.deb
    try example
    grep -q '<title>quxml' /usr/share/doc/libquxml-dev/html/index.html
    say "the guide and the reference are there"
}

# Nothing is left except what the package manager records about itself.
removal() {
    apt-get purge --yes "libquxml1:$architecture" "libquxml-dev:$architecture" libquxml-doc "quxml:$architecture"
    find /etc /usr /var/lib/dpkg/info -name '*quxml*' | diff /dev/null -
}

try() {
    "$1"
    say "a program by $1 printed what it must"
}

say "$(dpkg-query --show | wc --lines) packages in the bare system"
if [ $# -gt 0 ]; then
    cross_build
    say "built: $(cd packages && echo *.deb)"
    choose_cross_tools
fi
program
say "the program, its page and its completion are there"
install ./packages/libquxml-dev_*.deb cmake g++ make "pkgconf:$architecture"
lists libquxml-dev "$(echo /usr/lib/*/libquxml.a)"
[ ! -e /usr/include/boost ]
for route in find_package pkg_config pkg_config_static add_subdirectory fetch_content; do
    try $route
done
[ $# -gt 0 ] || documentation
removal
say "the packages went without a trace"
