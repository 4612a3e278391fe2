# The sources inside another project: libraries alone, no tests, no warnings turned into errors. BGP_SOURCES is the source folder.

bats_require_minimum_version 1.5.0
load support

@test "inside another project there are the libraries alone, and they serve" {
    cd "$BATS_TEST_TMPDIR"
    readme_program > asnum.c
    cmake -G Ninja -S "$BGP_SOURCES/tests/install/subproject" -B build -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "-DSOURCES=$BGP_SOURCES" \
        "-DASNUM=$PWD/asnum.c" "-DHOST=$BGP_SOURCES/tests/install/minimal_host.c"
    [[ "$(ctest --test-dir build -N)" == *"Total Tests: 0"* ]]
    grep -q 'contract\.cpp' build/compile_commands.json
    run ! grep -q -e -Werror build/compile_commands.json
    run ! grep -qE '"[^"]*/(tests|tool|bench|fuzz)/[^"]*\.cpp"' build/compile_commands.json
    cmake --build build -- --quiet
    build/asnum > printed
    readme_output | diff - printed
    build/host 65000:1 0.65000:1 65000:4294967296 > printed
    host_output | diff - printed
    # Nothing of it is installed with the project around it.
    cmake --install build --prefix "$PWD/prefix"
    [ ! -e prefix ]
    # Warnings become errors when it is asked for: what is missing above can be seen.
    cmake build -DBGP_WARNINGS_AS_ERRORS=ON
    grep -q -e -Werror build/compile_commands.json
}
