# SPDX-License-Identifier: MIT

# shellcheck shell=sh
# sh failing_memory.sh VARIABLE FIRST STEP LAST CODE ARGUMENT...
# Runs the program PROGRAM with the library LIBRARY, which refuses it memory, once for each number from FIRST to LAST that
# STEP leads to. Prints what is wrong: the program either ends with 5 and leaves a.xml as before.xml has it, or with
# CODE, and then leaves what after.xml has and writes what the file normal has.
variable=$1 number=$2 step=$3 last=$4 code=$5
shift 5
while [ "$number" -le "$last" ]; do
    cp before.xml a.xml
    rm -f a.xml~
    timeout 20 env LD_PRELOAD="$LIBRARY" "$variable=$number" "$PROGRAM" "$@" >out 2>err
    status=$?
    if [ "$status" -eq 5 ]; then
        echo "$number" >>refused
        cmp -s before.xml a.xml || echo "$variable=$number $1: the file is changed"
        grep -q 'out of memory\|Cannot allocate memory' err || echo "$variable=$number $1: $(cat err)"
    elif [ "$status" -ne "$code" ]; then
        echo "$variable=$number $1: $status, $(cat err)"
    elif ! cmp -s after.xml a.xml || ! cmp -s normal out; then
        echo "$variable=$number $1: another result"
    fi
    number=$((number + step))
done
