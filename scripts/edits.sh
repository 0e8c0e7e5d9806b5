# Counts what edits of the XML files of several Debian packages change.
refuse_arguments "$@"
folder=build/edits
packages=(fontconfig-config libgtk-3-common shared-mime-info firewalld polkitd dbus-daemon iso-codes libmaven3-core-java
          gsettings-desktop-schemas docbook-xsl docbook-xml xkb-data libreoffice-common openbox tango-icon-theme)
build release --target quxml-tool
mkdir -p "$folder/packages"
for package in "${packages[@]}"; do
    if [ ! -e "$folder/packages/$package" ]; then
        (cd "$folder" && apt-get download --quiet=2 "$package") || { echo "$package: not to be had"; continue; }
        dpkg-deb -x "$folder/$package"_*.deb "$folder/packages/$package"
        rm "$folder/$package"_*.deb
    fi
done
exec python3 scripts/edits.py build/release/tools/quxml "$folder/packages"
