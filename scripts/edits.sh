# Counts what edits of the XML files of several Debian packages change, and runs the tests of the hard cases.
# SPDX-License-Identifier: MIT
refuse_arguments "$@"
need_to_build_with libcli11-dev libboost-dev libgtest-dev python3
folder=build/edits
packages=(fontconfig-config libgtk-3-common shared-mime-info firewalld polkitd dbus-system-bus-common iso-codes
          libmaven3-core-java gsettings-desktop-schemas docbook-xsl docbook-xml xkb-data openbox tango-icon-theme
          libgtksourceview-4-common osinfo-db libwireshark-data libvirt0 wayland-protocols libgirepository1.0-dev tomcat10)
hard_cases='^(EditedBytes|SingleEdits|Edit|ShownDifference|RandomEdits|Format|Sort|InPlace|Killed|ReplaceFile|FailingMemory)\.'
build release quxml-tool quxml_tool_tests
run_tests release --tests-regex "$hard_cases"
mkdir -p "$folder/packages"
for package in "${packages[@]}"; do
    if [ ! -e "$folder/packages/$package" ]; then
        (cd "$folder" && apt-get download --quiet=2 "$package" 2>fetched.log) || { echo "$package: not to be had"; continue; }
        dpkg-deb --extract "$folder/$package"_*.deb "$folder/packages/$package"
        rm "$folder/$package"_*.deb
    fi
done
show python3 scripts/edits.py build/release/tools/quxml "$folder/packages"
