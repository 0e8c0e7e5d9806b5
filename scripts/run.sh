# Builds the library and shows it at work: on a small catalog, on a large file of real use, in a program.
# SPDX-License-Identifier: MIT
refuse_arguments "$@"
need_to_build_with libcli11-dev xkb-data
build release quxml-tool quickstart

quxml=build/release/tools/quxml
catalog=examples/catalog.xml
keyboards=/usr/share/X11/xkb/rules/evdev.xml # of the Debian package xkb-data

show "$quxml" format --compact "$catalog"
show "$quxml" query '/catalog/shelf/book[@lang=el]' "$catalog"
briefly "$quxml" format --sorted "$keyboards"
show "$quxml" query '/xkbConfigRegistry/layoutList/layout/configItem[name=de]' "$keyboards"
show build/release/examples/quickstart
