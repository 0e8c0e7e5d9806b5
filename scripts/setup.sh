# Installs what the verbs run and test need, and configures the everyday build.
# SPDX-License-Identifier: MIT
refuse_arguments "$@"
need_to_build_with gdb libcli11-dev libboost-dev libgtest-dev pkgconf liblzma-dev zlib1g-dev zsh xkb-data
configure dev
