# SPDX-License-Identifier: MIT

# For verbs that count instructions with valgrind.
# shellcheck shell=bash

# Prints how many instructions a program executes in `quxml_measured_work`; functions of shared libraries are bound beforehand.
count_instructions() {
    LD_BIND_NOW=1 valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect=quxml_measured_work "$@" 2>&1 |
        sed -n 's/^==[0-9]*== Collected : //p'
}
