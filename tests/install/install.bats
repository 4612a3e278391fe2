# The installed tree, from outside: headers, components, the README's program and link lines, pkg-config, find_package, a host
# in C, the tool. BGP_BUILD is the build folder, BGP_SOURCES the source folder.
#
# Nothing here mends what it looks at: each tree is what `cmake --install` leaves.

bats_require_minimum_version 1.5.0
load support

STRICT="-Wall -Wextra -Wpedantic -Werror"

setup_file() {
    export PREFIX=$BATS_FILE_TMPDIR/prefix
    cmake --install "$BGP_BUILD" --prefix "$PREFIX" > "$BATS_FILE_TMPDIR/install.log"
    LIBDIR=$(dirname "$(find "$PREFIX" -name libbgp_datatypes.so)")
    export LIBDIR PKG_CONFIG_PATH=$LIBDIR/pkgconfig
    unset LD_LIBRARY_PATH BGPDT_PLUGIN
}

setup() {
    cd "$BATS_TEST_TMPDIR"
}

# A link line of the README with another compiler: link COMPILER FROM-LINE
link() {
    eval "${2/#cc/$1 $STRICT}"
}

@test "every header stands by itself, as C and as C++" {
    count=0
    for header in $(find "$PREFIX/include" -type f); do
        case $header in *.h) cc -std=c11 $STRICT "-I$PREFIX/include" -fsyntax-only -x c "$header" ;; esac
        c++ -std=c++20 $STRICT "-I$PREFIX/include" -fsyntax-only -x c++ "$header"
        count=$((count + 1))
    done
    [ "$count" -ge 5 ]
}

@test "the components are disjoint, and together all" {
    for component in runtime development tools; do
        cmake --install "$BGP_BUILD" --prefix "$PWD/$component" --component "$component" > log
        (cd "$component" && find . ! -type d) | sort > "$component.list"
        [ -s "$component.list" ]
    done
    run ! grep -vE '/lib(bgp_datatypes|bgp_standalone_host)\.so\.[0-9.]+$' runtime.list
    run ! grep -vE '/bin/bgpdt$|/man1/bgpdt\.1$' tools.list
    sort runtime.list development.list tools.list > together
    sort -u together | diff - together
    (cd "$PREFIX" && find . ! -type d) | sort | diff together -
}

@test "the README's program is linked as the README says and prints what it says, as C and as C++" {
    readme_program > asnum.c
    readme_links | grep ' -o asnum$' > lines
    [ "$(wc -l < lines)" -eq 2 ]
    [ -n "$(readme_output)" ]
    while read -r line; do
        for compiler in "cc" "c++ -x c++"; do
            rm -f asnum
            link "$compiler" "${line/asnum.c/asnum.c -x none}"
            LD_LIBRARY_PATH=$LIBDIR ./asnum > printed
            readme_output | diff - printed
        done
    done < lines
    ./asnum # the last one was static: it needs no folder of libraries
    run ldd asnum
    [ "$status" -ne 0 ]
}

@test "a host of its own loads the plug-in when it is linked as the README says, and not without -rdynamic" {
    { echo '#define PLUG_IN "libbgp_datatypes.so.1"'; cat "$BGP_SOURCES/tests/install/minimal_host.c"; } > host.c
    line=$(readme_links | grep ' -o host$')
    link cc "$line"
    LD_LIBRARY_PATH=$LIBDIR ./host 65000:1 0.65000:1 65000:4294967296 > printed
    host_output | diff - printed
    link cc "${line/ -rdynamic/}"
    LD_LIBRARY_PATH=$LIBDIR run ./host
    [[ "$output" == *"undefined symbol"* ]]
    [ "$status" -ne 0 ]
}

@test "a host in C, from the installed headers and archives, needs the C library alone" {
    cc -std=c11 $STRICT "$BGP_SOURCES/tests/install/minimal_host.c" $(pkg-config --cflags bgp_host_common) \
        "$LIBDIR/libbgp_datatypes.a" "$LIBDIR/libbgp_host_common.a" -o host
    ./host 65000:1 0.65000:1 65000:4294967296 > printed
    host_output | diff - printed
    [ "$(objdump -p host | sed -n 's/ *NEEDED *//p')" = libc.so.6 ]
}

@test "a host in a module of another program shows nothing of what it is made of" {
    { cat "$BGP_SOURCES/tests/install/minimal_host.c"; echo 'int Module_Init(void); int Module_Init(void) { return main(0, 0); }'; } > module.c
    echo '{ global: Module_*; local: *; };' > module.map
    cc -shared -fPIC module.c -Wl,--version-script=module.map -Wl,-z,defs $(pkg-config --cflags bgp_host_common) \
        "$LIBDIR/libbgp_datatypes.a" "$LIBDIR/libbgp_host_common.a" -o module.so
    [ "$(nm -D --defined-only module.so | sed 's/.* //')" = Module_Init ]
}

@test "a tree that was moved still serves pkg-config" {
    cp -a "$PREFIX" moved
    rm -rf "$PWD/elsewhere" && mv moved elsewhere
    PKG_CONFIG_PATH=$PWD/elsewhere/${LIBDIR#"$PREFIX"/}/pkgconfig
    for package in bgp_datatypes bgp_host_common bgp_standalone_host; do
        [ "$(pkg-config --modversion "$package")" = 1.0.0 ]
        for word in $(pkg-config --cflags --libs "$package"); do
            case $word in
            -I*) [ "$(realpath "${word#-I}")" = "$PWD/elsewhere/include" ] && [ -e "${word#-I}/bgp_datatypes.h" ] ;;
            -L*) [ -e "${word#-L}/lib$package.a" ] && [[ "$(realpath "${word#-L}")" == "$PWD/elsewhere/"* ]] ;;
            -l*) [ "$word" = "-l$package" ] ;;
            *) false ;;
            esac
        done
    done
}

@test "find_package serves C and C++, shared and static, and a host in C" {
    readme_program > asnum.c
    cmake -G Ninja -S "$BGP_SOURCES/tests/install/consumer" -B build "-DCMAKE_PREFIX_PATH=$PREFIX" "-DASNUM=$PWD/asnum.c" \
        "-DHOST=$BGP_SOURCES/tests/install/minimal_host.c"
    cmake --build build -- --quiet
    for program in shared_c shared_cxx static_c static_cxx; do
        "build/$program" > printed
        readme_output | diff - printed
    done
    build/host 65000:1 0.65000:1 65000:4294967296 > printed
    host_output | diff - printed
    ldd build/shared_c | grep -q "$LIBDIR/libbgp_datatypes.so.1"
    [[ "$(ldd build/static_c)" != *libbgp* ]]
}

@test "find_package knows its version" {
    for wanted in 1.0 1 1.0.0; do
        printf 'cmake_minimum_required(VERSION 3.25)\nproject(asks C)\nfind_package(bgp_datatypes %s REQUIRED CONFIG)\n' "$wanted" > CMakeLists.txt
        cmake -G Ninja -S . -B "build-$wanted" "-DCMAKE_PREFIX_PATH=$PREFIX"
    done
    for wanted in 2.0 1.1 0.9; do
        printf 'cmake_minimum_required(VERSION 3.25)\nproject(asks C)\nfind_package(bgp_datatypes %s REQUIRED CONFIG)\n' "$wanted" > CMakeLists.txt
        run cmake -G Ninja -S . -B "build-$wanted" "-DCMAKE_PREFIX_PATH=$PREFIX"
        [ "$status" -ne 0 ]
        [[ "$output" == *"requested version"* ]]
    done
}

# The plug-in of the build folder, out of the way and back.
hide() { for file in "$BGP_BUILD"/lib/libbgp_datatypes.so*; do mv "$file" "$file.hidden"; done; }
show() {
    for file in "$BGP_BUILD"/lib/libbgp_datatypes.so*.hidden; do
        [ ! -e "$file" ] || mv "$file" "${file%.hidden}"
    done
}
teardown() {
    show
}

@test "the installed tool finds the installed plug-in, and none in the build folder" {
    cp -a "$PREFIX" prefix
    plugin=$(find prefix -name 'libbgp_datatypes.so.1')
    hide
    [ -z "$(ls "$BGP_BUILD"/lib/libbgp_datatypes.so.1 2> none)" ]
    prefix/bin/bgpdt show ASNUM 1.0 > shown
    grep -q '"1.0" (mode 1,2,6)' shown
    rm "$plugin"*
    run prefix/bin/bgpdt show ASNUM 1.0
    [ "$status" -eq 3 ]
    [[ "$output" == *libbgp_datatypes.so.1* ]]
    show
    run prefix/bin/bgpdt show ASNUM 1.0
    [ "$status" -eq 3 ]
    LD_LIBRARY_PATH=$LIBDIR prefix/bin/bgpdt show ASNUM 1.0 > shown # where the loader looks
    grep -q '"1.0" (mode 1,2,6)' shown
}
