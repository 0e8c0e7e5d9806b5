# Builds the Debian packages of what is committed, twice, checks them, and tries them in a bare Debian; takes root.
refuse_arguments "$@"
[ "$(id -u)" -eq 0 ] || fail "package: only root can make a system to try the packages in"
need_to_build_with debhelper dpkg-dev libcli11-dev libgtest-dev lintian mmdebstrap
place=$PWD/build/package
first=$place/quxml second=$place/again/in/another/folder/quxml

# Lays out the committed files in a folder; the packages will stand beside it.
export_tree() {
    mkdir -p "$1"
    git archive HEAD | tar --extract --directory "$1"
}

build_packages() (
    cd "$1" || exit
    nice dpkg-buildpackage --no-sign
)

packages_in() {
    find "$(dirname "$1")" -maxdepth 1 \( -name '*.deb' -o -name '*.tar.xz' -o -name '*.dsc' \) -printf '%f\n' | sort
}

# Neither the folder nor whether the tests were built may leave a trace.
compare_packages() {
    local package
    [ "$(packages_in "$first")" = "$(packages_in "$second")" ] || fail "package: the two builds made different packages"
    for package in $(packages_in "$first"); do
        cmp "$first/../$package" "$second/../$package" || fail "package: $package is not reproducible"
        echo "$(stat --format=%s "$first/../$package") bytes, the same twice: $package"
    done
}

# Prints the sources of Debian's packages that this machine has indexes of, as lines of a sources.list.
debian_sources() {
    apt-get indextargets --format "deb \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" "Created-By: Packages" "Origin: Debian" |
        sort --unique
}

# Makes a bare Debian below build/, installs the packages in it and tries them there. It is gone afterwards, whatever
# happens, and what is mounted in it is never seen by the rest of this machine.
try_packages() {
    debian_sources | TMPDIR=$place/temporary mmdebstrap --mode=root --variant=minbase --format=null \
        --customize-hook="copy-in '$place/trial' /" --customize-hook="chroot \"\$1\" bash /trial/trial.sh" \
        "$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)" /dev/null -
}

[ -n "$(debian_sources)" ] || fail "package: there are no indexes of Debian's packages here; run apt-get update"
[ -z "$(git status --porcelain)" ] || echo "The packages are made of what is committed; not everything is."
rm -rf --one-file-system "$place"
mkdir -p "$place/temporary" "$place/trial"
export_tree "$first"
export_tree "$second"
DEB_BUILD_OPTIONS=terse quietly build_packages "$first"
grep "tests passed" build/last.log
DEB_BUILD_OPTIONS="terse nocheck" DEB_BUILD_PROFILES=nocheck quietly build_packages "$second"
compare_packages
show lintian --allow-root --fail-on error,warning "$place"/*.changes
cp -r "$first"/tests/{packaging/trial.sh,consumers/consumer,data} "$place"/*.deb "$place/trial"
quietly try_packages
sed -n 's/^trial: //p' build/last.log
