# Builds and runs the whole test suite; arguments go to CTest, such as -R NAME.
need_to_build_with libcli11-dev libgtest-dev
build dev
run_tests dev "$@"
