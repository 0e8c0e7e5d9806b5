# Applies the formatting that lint checks.
need clang-format-14
cpp_files | show xargs clang-format-14 -i
