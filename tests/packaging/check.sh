# SPDX-License-Identifier: MIT

# bash check.sh SOURCES VERSION CMAKE FOLDER NAME: the test NAME, one of the functions below, of what debian/ and
# packaging/ say about the SOURCES; VERSION is the one of version.h, and in FOLDER the test may write.
# shellcheck shell=bash
set -euo pipefail
export LC_ALL=C
sources=$1 version=$2 cmake=$3 work=$4/$5
cd "$sources"

fail() {
    echo "$*" >&2
    exit 1
}

versions() {
    grep -m 1 . debian/changelog | grep -F "quxml ($version) " || fail "debian/changelog is not of $version"
    [ "$(ls packaging/yocto)" = "quxml_$version.bb" ] || fail "the recipe is not of $version"
    grep -xF "QUXML_VERSION = $version" packaging/buildroot/quxml.mk || fail "quxml.mk is not of $version"
}

licences() {
    grep -F "file://LICENSE;md5=$(checksum md5sum)\"" packaging/yocto/*.bb || fail "the recipe's checksum differs"
    grep -xF "sha256  $(checksum sha256sum)  LICENSE" packaging/buildroot/quxml.hash || fail "quxml.hash differs"
    grep -xF "Copyright: $(sed -n 's/^Copyright (c) //p' LICENSE)" debian/copyright || fail "the holders differ"
    sed -n '/^ Permission/,$s/^ \.\{0,1\}//p' debian/copyright | diff <(sed -n '/^Permission/,$p' LICENSE) -
}

# The symbols that are used of libxml2 are older than what the library needs, so the packages have to say it.
libxml2() {
    local needed
    needed=$(sed -n 's/^find_package(LibXml2 \([0-9.]*\) REQUIRED)$/\1/p' src/CMakeLists.txt)
    # Lines that begin with one blank are descriptions.
    grep -vE '^ [^ ]' debian/control | grep -oE 'libxml2(-dev)?[^,]*' | sed 's/-dev//' | sort | uniq -c |
        diff <(echo "      4 libxml2 (>= $needed)") - || fail "not all four ask for libxml2 $needed"
}

checksum() {
    "$1" <LICENSE | cut -d ' ' -f 1
}

# CMake only warns of a misspelt option, at the end.
options() {
    local name names
    names=$(grep -rhoE -e '-D[A-Z0-9_]+' debian/rules packaging | sed 's/^-D//' | sort -u)
    [[ $names == *QUXML_BUILD_TESTS* ]] || fail "no options were found"
    for name in $names; do
        case $name in
            BUILD_SHARED_LIBS | CMAKE_*) "$cmake" --help-variable "$name" >/dev/null ;;
            *) grep -E "^(option|set)\($name " CMakeLists.txt ;;
        esac || fail "there is no option $name"
    done
}

# Makes an empty file of each that is installed of a kind of library, static or shared, the libraries in folder $1.
lay_out() {
    local kind file
    rm -rf "$work"
    for kind in "${@:2}"; do
        while read -r file; do
            file=$work/usr/${file/#LIB/$1}
            mkdir -p "${file%/*}"
            touch "$file"
        done <"tests/consumers/installed_files.$kind.txt"
    done
}

# Puts what patterns name into a package; each must match something that no other package has.
put_into_package() {
    local pattern
    for pattern in "$@"; do
        # shellcheck disable=SC2086
        (cd "$work" && rm -r $pattern)
    done
}

check_that_nothing_is_left() {
    find "$work" -type f | diff /dev/null - || fail "no package has these"
}

debian_files() {
    local list pattern
    lay_out lib/triplet static shared
    for list in debian/*.install debian/not-installed; do
        while read -r pattern _; do
            put_into_package "$pattern"
        done <"$list"
    done
    check_that_nothing_is_left
}

# The folders at the end go into packages without being named.
yocto_files() {
    local files
    lay_out lib shared
    files=$(sed -n 's/^FILES:.* +\{0,1\}= "\(.*\)"$/\1/p' packaging/yocto/*.bb)
    files=$(sed -e 's|[$]{bindir}|usr/bin|g' -e 's|[$]{datadir}|usr/share|g' <<<"$files")
    # shellcheck disable=SC2086
    put_into_package $files
    rm -rf "$work"/usr/{include,lib,share/doc,share/man}
    check_that_nothing_is_left
}

# Names what would be installed of the extras if they are switched $1.
list_extras() {
    rm -rf "$work"
    "$cmake" -S . -B "$work" -DQUXML_EXTRAS="$1" -DQUXML_BUILD_TESTS=OFF -DQUXML_BUILD_TOOLS=OFF \
        -DQUXML_BUILD_EXAMPLES=OFF >/dev/null
    grep -rhoE --include=cmake_install.cmake 'libquxml-extras\.a|quxml-extras\.pc|quxml/extras/values\.h' "$work" |
        sort -u
}

# Recipes for devices switch the extras off.
without_extras() {
    list_extras ON | diff <(printf '%s\n' libquxml-extras.a quxml-extras.pc quxml/extras/values.h) - ||
        fail "the extras are not installed"
    [ -z "$(list_extras OFF || true)" ] || fail "the extras are installed although they are switched off"
}

debian_symbols() {
    sed -n 's/^ (c++)"\(.*\)@Base" [0-9.]*$/\1/p' debian/libquxml1.symbols | diff tests/consumers/symbols.txt -
}

"$5"
