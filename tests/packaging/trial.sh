#!/usr/bin/env bash
# What a user of the Debian packages does in a bare system: installs them, uses the program, builds programs by every
# route, and removes them. Beside this script stand the packages, `consumer`, a user's project, and `data`, documents.
set -euxo pipefail
cd "$(dirname "$0")"
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
examples=/usr/share/doc/libquxml-dev/examples

say() {
    echo "trial: $*"
}

install() {
    apt-get install --yes --no-install-recommends "$@"
}

# Runs a program and compares what it prints with a file.
check() {
    "$2" | diff "$1" -
}

needs_the_shared_library() {
    readelf --dynamic "$1" | grep -F "Shared library: [libquxml.so.1]"
}

program() {
    install ./libquxml1_*.deb ./quxml_*.deb
    say "$(quxml --version)"
    [[ " $(quxml --version) " == *" $(dpkg-query --show --showformat '${Version}' quxml) "* ]]
    quxml format data/catalog.xml | diff data/catalog.formatted -
    [ "$(quxml query "/catalog/book[2]/title" data/catalog.xml)" = '<title lang="de">Grüße aus Köln</title>' ]
    gzip --decompress --stdout /usr/share/man/man1/quxml.1.gz | grep -w quxml
    bash -n /usr/share/bash-completion/completions/quxml
    head --lines=1 /usr/share/zsh/vendor-completions/_quxml | grep -x "#compdef quxml"
}

find_package() {
    cmake -S consumer -B find_package -Droute=find_package
    cmake --build find_package
    needs_the_shared_library find_package/main
    check consumer/main.out find_package/main
}

pkg_config() {
    eval "c++ -std=c++11 consumer/main.cpp -o shared_main $(pkg-config --cflags --libs quxml)"
    needs_the_shared_library shared_main
    check consumer/main.out ./shared_main
}

pkg_config_static() {
    eval "c++ -std=c++11 -static consumer/main.cpp -o static_main $(pkg-config --static --cflags --libs quxml)"
    readelf --dynamic static_main | grep -F "no dynamic section"
    check consumer/main.out ./static_main
}

example() {
    c++ -std=c++11 "$examples/quickstart.cpp" -o quickstart -lquxml
    check "$examples/quickstart.out" ./quickstart
}

# Nothing is left but what the package manager writes about itself.
removal() {
    apt-get purge --yes libquxml1 libquxml-dev libquxml-doc quxml
    find /etc /usr /var/lib/dpkg/info -name '*quxml*' | diff /dev/null -
}

say "$(dpkg-query --show | wc --lines) packages in the bare system"
program
say "the program, its page and its completion are there"
install ./libquxml-dev_*.deb ./libquxml-doc_*.deb cmake g++ make pkgconf
for route in find_package pkg_config pkg_config_static example; do
    $route
    say "a program by $route printed what it must"
done
grep -q '<title>quxml' /usr/share/doc/libquxml-dev/html/index.html
say "the guide and the reference are there"
removal
say "the packages went without a trace"
