# Builds Debian packages of what is committed, twice, and tries them; or cross-builds them for ARCH; needs root.
# SPDX-License-Identifier: MIT
. scripts/support/sysroot.sh
[ "$(id -u)" -eq 0 ] || fail "package: only root can set up a system to try the packages in"
need_to_build_with debhelper dpkg-dev libcli11-dev libboost-dev libgtest-dev lintian mmdebstrap
place=$PWD/build/package
first=$place/quxml second=$place/again/in/another/folder/quxml

# Puts the committed files into a folder; the packages will be built beside it.
export_tree() {
    mkdir -p "$1"
    git archive HEAD | tar --extract --directory "$1"
}

# The playground cannot be built where packages are: what it is made of comes with no package. The documentation has the one
# that is built here.
take_playground() {
    [ -e build/playground/index.html ] || show ./dev playground
    mkdir "$1/build"
    cp -r build/playground "$1/build"
}

build_packages() (
    cd "$1" || exit
    nice dpkg-buildpackage --no-sign
)

packages_in() {
    find "$(dirname "$1")" -maxdepth 1 \( -name '*.deb' -o -name '*.tar.xz' -o -name '*.dsc' \) -printf '%f\n' | sort
}

# The packages must depend neither on the folder nor on whether the tests were built.
compare_packages() {
    local package
    [ "$(packages_in "$first")" = "$(packages_in "$second")" ] || fail "package: the two builds made different packages"
    for package in $(packages_in "$first"); do
        cmp "$first/../$package" "$second/../$package" || fail "package: $package is not reproducible"
        echo "$(stat --format=%s "$first/../$package") bytes, the same twice: $package"
    done
}

# Prints the sources of Debian's packages of which an apt-get has indexes, as lines of a sources.list.
debian_sources() {
    "$@" indextargets --format "deb \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" "Created-By: Packages" "Origin: Debian" |
        sort --unique
}

# Makes a bare Debian below build/, from the sources on standard input, and tries the packages in it. It is gone
# afterwards, whatever happens, and what is mounted in it is never seen by the rest of this machine.
try_packages() {
    cp -r "$first"/tests/{packaging/trial.sh,consumers/consumer,data} "$place/trial"
    export_tree "$place/trial/sources"
    TMPDIR=$place/temporary quietly mmdebstrap --mode=root --variant=minbase --format=null \
        --customize-hook="copy-in '$place/trial' /" --customize-hook="chroot \"\$1\" bash /trial/trial.sh $1" \
        "${@:2}" "$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)" /dev/null -
    sed -n 's/^trial: //p' build/last.log
}

package() {
    [ -n "$(debian_sources apt-get)" ] || fail "package: there are no indexes of Debian's packages here; run apt-get update"
    export_tree "$first"
    export_tree "$second"
    take_playground "$first"
    take_playground "$second"
    DEB_BUILD_OPTIONS=terse quietly build_packages "$first"
    grep "tests passed" build/last.log
    DEB_BUILD_OPTIONS="terse nocheck" DEB_BUILD_PROFILES=nocheck quietly build_packages "$second"
    compare_packages
    show lintian --allow-root --fail-on error,warning "$place"/*.changes
    cp "$place"/*.deb "$place/trial/packages"
    debian_sources apt-get | try_packages ""
}

# The packages of another architecture are built and tried in a Debian of their own, so that this machine never learns of
# that architecture. Only sources with packages of both are used: a library must have the same version in both.
cross_package() {
    local made=$place/$1
    triplet_of "$1" >/dev/null
    update_indexes "$1"
    [ -n "$(debian_sources apt_get_for "$1")" ] || fail "package: Debian has no packages for $1"
    export_tree "$place/trial/packages/quxml"
    export_tree "$first"
    mkdir "$made"
    debian_sources apt_get_for "$1" | try_packages "$1" --architectures="$(dpkg --print-architecture),$1" \
        --customize-hook="sync-out /trial/packages '$made'"
    show lintian --allow-root --fail-on error,warning "$made"/*.changes
}

[ $# -le 1 ] || fail "package takes one architecture at most: $*"
[ -z "$(git status --porcelain)" ] || echo "The packages are built from what is committed; there are uncommitted changes."
rm -rf --one-file-system "$place"
mkdir -p "$place/temporary" "$place/trial/packages"
if [ $# -eq 0 ]; then
    package
else
    cross_package "$1"
fi
