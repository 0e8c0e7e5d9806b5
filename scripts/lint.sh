# Checks the formatting, then runs clang-tidy and shellcheck; no finding is let through.
refuse_arguments "$@"
need_to_build_with libcli11-dev libgtest-dev libbenchmark-dev libpugixml-dev libtinyxml2-dev clang clang-format-14 \
    clang-tidy-14 shellcheck
configure clang
quietly shellcheck tests/*/*.sh tests/*/*/*.sh
cpp_files | quietly xargs clang-format-14 --dry-run --Werror
cpp_files | grep '\.cpp$' | quietly xargs --max-procs="$(nproc)" --max-args=1 clang-tidy-14 --quiet -p build/clang
quietly shellcheck --shell=bash dev .ci/run scripts/*.sh scripts/support/*.sh
