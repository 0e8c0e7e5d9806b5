# Checks formatting, includes and comments, then runs clang-tidy and shellcheck; fails on any finding.
# SPDX-License-Identifier: MIT

# Names the folders whose headers the files of a folder may include, besides their own.
known_to() {
    case $1 in
        src/dom | extras/* | tools/terminal) ;;
        src/*) echo dom ;;
        tools) echo commands manual terminal ;;
        tools/commands) echo paths reading terminal trees writing ;;
        tools/paths) echo terminal trees ;;
        tools/reading) echo reader terminal ;;
        tools/manual | tools/trees) echo terminal ;;
        tools/writing) echo reading terminal trees ;;
        playground) echo paths reading terminal ;;
    esac
}

# Prints what the files of a folder include of folders that they are not meant to know.
wrong_includes() (
    known=$(known_to "$1")
    shopt -s nullglob
    grep --with-filename --line-number '^#include ".*/' "$1"/*.{h,cpp} |
        grep --invert-match --extended-regexp "\"(quxml|${1##*/}${known:+|${known// /|}})/"
)

check_directions() {
    local folder status=0
    while read -r folder; do
        ! wrong_includes "$folder" || status=1
    done < <(find src extras tools playground -name '*.h' -printf '%h\n' -o -name '*.cpp' -printf '%h\n' | sort --unique)
    # The library knows nothing about its extras; the program uses both as any other does, between < and >.
    ! grep --recursive --line-number '^#include [<"]quxml/extras/' src include || status=1
    return "$status"
}

# Fails if a comment says that something is deliberate and names no test that pins it.
check_deliberate() {
    find include src extras tools -name '*.h' -o -name '*.cpp' | sort | xargs awk '
        /Deliberate:/ { place = FILENAME ":" FNR }
        /Tests?:/ { place = "" }
        place != "" && !/\/\// { print place ": names no test"; place = ""; status = 1 }
        END { exit status }'
}

# Source files name the licence; it holds for all others, too.
check_licences() {
    local files
    files=$(git ls-files '*.cpp' '*.h' '*.cmake' '*CMakeLists.txt' '*.in' '*.jq' '*.js' '*.mjs' '*.mk' '*.py' '*.sh' dev .ci/run debian/rules |
        grep --invert-match '/Config.in$' | xargs grep --files-without-match --fixed-strings "SPDX-License-Identifier: MIT" || true)
    [ -z "$files" ] || fail "these files do not name their licence: $files"
}

refuse_arguments "$@"
need_to_build_with libcli11-dev libboost-dev libgtest-dev libpugixml-dev libtinyxml2-dev clang clang-format-14 \
    clang-tidy-14 shellcheck
configure clang
quietly shellcheck tests/*/*.sh tests/*/*/*.sh
quietly check_directions
quietly check_licences
quietly check_deliberate
cpp_files | quietly xargs clang-format-14 --dry-run --Werror
# One file is for emscripten alone.
cpp_files | grep '\.cpp$' | grep --invert-match '^playground/exports.cpp$' | quietly xargs --max-procs="$(nproc)" --max-args=1 clang-tidy-14 --quiet -p build/clang
quietly shellcheck --shell=bash dev .ci/run scripts/*.sh scripts/support/*.sh
