# check, try and the scripts behind them, in a tree of their own and with stand-ins for what would install or build.
# BGP_SOURCES is the source folder, BGPDT the tool.

bats_require_minimum_version 1.5.0

setup() {
    cd "$BATS_TEST_TMPDIR"
    mkdir -p tree/examples tree/src stubs
    cp -r "$BGP_SOURCES"/{check,try,scripts,.clang-format,.clang-tidy} tree
    # Of the system's programs these and no others, so that there is no sudo but a stand-in.
    for program in sh env sed grep dirname mktemp cat rm find wc xargs chmod mkdir head tail clang-format clang-tidy nproc touch; do
        ln -s "$(command -v "$program")" stubs/"$program"
    done
    stub dpkg-query 'echo "install ok installed"'
    stub id 'echo 1000'
    TREE=$PWD/tree
}

# A stand-in for a program: stub NAME COMMAND
stub() {
    rm -f "stubs/$1"
    printf '#!/bin/sh\n%s\n' "$2" > "stubs/$1"
    chmod +x "stubs/$1"
}

# Runs a program where only the stand-ins are.
isolated() {
    PATH=$BATS_TEST_TMPDIR/stubs "$@"
}

@test "check tells its steps" {
    run --separate-stderr isolated "$TREE/check" --help
    [ "$status" -eq 0 ]
    [[ "$output" == "usage: ./check [STEP...]"*format*release*tidy*toy*speed*asan*arm* ]]
    [ -z "$stderr" ]
}

@test "check refuses a step that it does not know, before it does anything" {
    stub dpkg-query 'touch installed'
    run --separate-stderr isolated "$TREE/check" format relaese
    [ "$status" -eq 2 ]
    [ -z "$output" ]
    [[ "$stderr" == *'no step "relaese"'*usage:* ]]
    [ ! -e tree/installed ]
}

@test "check format looks at the files outside a git checkout too" {
    echo 'int x;' > tree/src/good.cpp
    printf '#ifndef A\n#define A\n#endif\n' > tree/src/good.h
    run isolated "$TREE/check" format
    [ "$status" -eq 0 ]
    [[ "$output" == *"format: 2 files formatted"* ]]
    mkdir -p tree/build
    echo 'int   x ;' > tree/build/generated.cpp
    isolated "$TREE/check" format
    for suffix in cpp hpp c h; do
        echo 'int   x ;' > "tree/src/bad.$suffix"
        run isolated "$TREE/check" format
        [ "$status" -ne 0 ]
        [[ "$output" != *passed* ]]
        rm "tree/src/bad.$suffix"
    done
}

@test "check format fails when there is nothing to look at" {
    run isolated "$TREE/check" format
    [ "$status" -ne 0 ]
    [[ "$output" == *"no sources"* ]]
}

# How a source is compiled, for clang-tidy.
compiled() {
    mkdir -p tree/build/release
    echo "[{\"directory\": \"$TREE\", \"file\": \"$TREE/$1\", \"command\": \"c++ -std=c++20 -c $1\"}]" \
        > tree/build/release/compile_commands.json
}

@test "check tidy finds what is not of one hand, in sources and headers, compiled or not" {
    compiled src/good.cpp
    printf '#include "good.h"\nint Twice(int number)\n{\n    return 2 * number;\n}\n' > tree/src/good.cpp
    echo 'int Twice(int number);' > tree/src/good.h
    run isolated "$TREE/check" tidy
    [ "$status" -eq 0 ]
    [[ "$output" == *"tidy: names and braces of 1 sources"* ]]
    echo 'void Bad(int n) { while (n > 0) --n; }' > tree/src/bad.cpp
    run isolated "$TREE/check" tidy
    [ "$status" -ne 0 ]
    [[ "$output" == *"bad.cpp:1:"*readability-braces-around-statements* ]]
    [[ "$output" != *passed* ]]
    for wrong in 'int twice();' 'struct twice {};' 'constexpr int Twice = 2;' 'enum class Times { Twice };' \
        'void Twice(int Number);' 'struct Pair { int First; };' 'class Pair { int first; };' '#define twice 2'; do
        echo "$wrong" > tree/src/bad.cpp
        run isolated "$TREE/check" tidy
        [ "$status" -ne 0 ]
        [[ "$output" == *"bad.cpp:1:"*readability-identifier-naming* ]]
    done
    rm tree/src/bad.cpp
    echo 'int twice(int number);' >> tree/src/good.h
    run isolated "$TREE/check" tidy
    [ "$status" -ne 0 ]
    [[ "$output" == *"good.h:2:"*readability-identifier-naming* ]]
}

@test "check tidy fails when there is nothing to look at, or nothing that looks" {
    run isolated "$TREE/check" tidy
    [ "$status" -ne 0 ]
    [[ "$output" == *"tidy: there are no sources"* ]]
    compiled src/good.cpp
    echo 'int Twice(int number);' > tree/src/good.cpp
    stub clang-tidy 'echo "no such program" >&2; exit 127'
    run isolated "$TREE/check" tidy
    [ "$status" -ne 0 ]
    [[ "$output" == *"no such program"* ]]
    [[ "$output" != *passed* ]]
}

@test "install without root or sudo prints the command and fails" {
    stub dpkg-query 'exit 1'
    stub apt-get 'touch called'
    run --separate-stderr isolated "$TREE/scripts/install" bench
    [ "$status" -eq 1 ]
    [[ "$stderr" == *"apt-get update && apt-get install --no-install-recommends libbenchmark-dev"* ]]
    [ ! -e called ]
}

@test "install says one line a step, and shows what apt said only when it fails" {
    stub dpkg-query 'exit 1'
    stub sudo 'exec "$@"'
    stub apt-get 'echo "noise of $*"; echo "noise of errors" >&2; echo "$*" >> called'
    run --separate-stderr isolated "$TREE/scripts/install" bench
    [ "$status" -eq 0 ]
    [ -z "$output" ]
    [ "$stderr" = "reading the lists of packages
installing libbenchmark-dev" ]
    [ "$(tail -n 1 called)" = "-qq install -y --no-install-recommends libbenchmark-dev" ]
    stub apt-get 'echo "noise of $*"; [ "$2" = update ]'
    run --separate-stderr isolated "$TREE/scripts/install" bench
    [ "$status" -ne 0 ]
    [[ "$stderr" == *"noise of -qq install"*"failed: "* ]]
}

@test "install does nothing when nothing is missing, and knows its sections" {
    stub apt-get 'touch called'
    isolated "$TREE/scripts/install" build test
    [ ! -e called ]
    run isolated "$TREE/scripts/install" nonsense
    [ "$status" -eq 2 ]
}

@test "try prints what is about the values, and nothing of the build" {
    stub cmake 'echo "ninja: no work to do."; echo "ninja: warning" >&2; echo "$*" >> called'
    printf '#!/bin/sh\necho "values: $*"\n' > tree/examples/convert-values
    chmod +x tree/examples/convert-values
    run --separate-stderr isolated "$TREE/try" --type ASNUM numbers.txt
    [ "$status" -eq 0 ]
    [ "$output" = "values: $TREE/build/release/tool/bgpdt --type ASNUM numbers.txt" ]
    [ "$stderr" = "building the plug-in and bgpdt" ]
    [ "$(wc -l < tree/called)" -eq 2 ] # configured and built
    stub cmake 'echo "error: of the build"; exit 1'
    run --separate-stderr isolated "$TREE/try"
    [ "$status" -ne 0 ]
    [ -z "$output" ]
    [[ "$stderr" == *"error: of the build"* ]]
}

@test "the real values are converted, summed up, and refusals explained" {
    [ -n "${BGPDT:-}" ] || skip "no tool is built"
    run --separate-stderr "$BGP_SOURCES/examples/convert-values" "$BGPDT"
    [ "$status" -eq 0 ]
    [ -z "$stderr" ]
    types=$(ls "$BGP_SOURCES"/examples/values | wc -l)
    [ "$types" -gt 10 ]
    echo "$output" > printed
    [[ "$output" == *" real values of $types types: "* ]]
    # The rows of the table add up to the sentence below it.
    rows=$(awk 'NR > 1 && NF == 0 {exit} NR > 1 {read += $2; accepted += $3; changed += $4; refused += $5}
        END {print read, accepted, changed, refused}' printed)
    sentence=$(sed -n 's/^\([0-9]*\) real values of [0-9]* types: \([0-9]*\) became values, \([0-9]*\) of them.*; \([0-9]*\) were.*/\1 \2 \3 \4/p' printed)
    [ "$rows" = "$sentence" ]
    # Each type that refused one says why.
    refusing=$(awk 'NR > 1 && NF == 0 {exit} NR > 1 && $5 > 0' printed | wc -l)
    [ "$refusing" -gt 0 ]
    [ "$(sed -n '/^Refused, and why:$/,/^$/p' printed | grep -c '^  [A-Z].* refused: [A-Za-z]')" -eq "$refusing" ]
    changing=$(awk 'NR > 1 && NF == 0 {exit} NR > 1 && $4 > 0' printed | wc -l)
    [ "$(sed -n '/^A spelling of their own:$/,/^$/p' printed | grep -c '^  [A-Z].* -> ')" -eq "$changing" ]
}
