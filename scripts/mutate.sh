# Breaks the library's code in many small ways and checks that the tests notice each; arguments go to mutate.py.
# SPDX-License-Identifier: MIT
need_to_build_with libboost-dev libgtest-dev python3
configure dev
show python3 scripts/mutate.py "$@"
