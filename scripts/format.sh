# Applies the formatting that lint checks.
# SPDX-License-Identifier: MIT
refuse_arguments "$@"
need clang-format-14
cpp_files | show xargs clang-format-14 -i
