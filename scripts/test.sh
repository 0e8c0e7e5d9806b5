# Builds and runs the whole test suite; arguments go to CTest, such as -R NAME.
# SPDX-License-Identifier: MIT

# liblzma-dev and zlib1g-dev are for static programs, which are linked with everything that libxml2 uses.
need_to_build_with gdb jq libcli11-dev libboost-dev libgtest-dev pkgconf liblzma-dev zlib1g-dev zsh
build dev
run_tests dev "$@"
