# The regression check: what it must notice, and what it may not. BGP_SOURCES is the source folder, BGP_INSTRUCTIONS the program
# that callgrind runs.

setup_file() {
    export COUNTS=$BATS_FILE_TMPDIR/counts
    "$BGP_SOURCES/bench/count" > "$COUNTS"
}

setup() {
    cd "$BATS_TEST_TMPDIR"
    cp "$COUNTS" baseline
}

regression() {
    "$BGP_SOURCES/bench/regression" --baseline baseline "$@"
}

# One operation's count in the baseline, times so much.
change() {
    awk -F '\t' -v OFS='\t' -v name="$1" -v factor="$2" '$2 == name { $1 = sprintf("%.1f", $1 * factor) } 1' "$COUNTS" > baseline
    ! cmp -s "$COUNTS" baseline
}

@test "twenty operations are counted, and what the counts depend on is told" {
    [ "$(grep -c '	' "$COUNTS")" -eq 20 ]
    grep -qx "processor $(uname -m)" "$COUNTS"
    grep -q '^compiler [0-9]' "$COUNTS"
    grep -q '^libc [0-9]' "$COUNTS"
    # A conversion takes tens to thousands of instructions.
    [ "$(awk -F '\t' 'NF == 2 && $1 > 20 && $1 < 200000' "$COUNTS" | wc -l)" -eq 20 ]
    [ "$(awk -F '\t' 'NF == 2' "$BGP_SOURCES/bench/baseline.txt" | wc -l)" -eq 20 ]
}

@test "the same counts pass, and so do others within 3 %" {
    run regression --counts "$COUNTS"
    [ "$status" -eq 0 ]
    [[ "$output" == "speed: 20 operations within 3 % of baseline" ]]
    change "VRFRT, AS:n, in" 1.025
    regression --counts "$COUNTS"
    change "VRFRT, AS:n, in" 0.975
    regression --counts "$COUNTS"
}

@test "counts are the same the next time" {
    run regression
    [ "$status" -eq 0 ]
    [[ "$output" == *"20 operations within"* ]]
}

@test "an operation that has become dearer, or cheaper, is told" {
    for factor in 0.95 1.05; do
        for name in "VRFRT, AS:n, in" "BGPLSPREFIX, node, out" "VRFRT, AS:n, compare"; do
            change "$name" "$factor"
            run regression --counts "$COUNTS"
            [ "$status" -eq 1 ]
            [ "$(grep -c ' instructions (' <<< "$output")" -eq 1 ]
            [[ "$output" == *"speed: $name: "*" -> "*--update* ]]
        done
    done
}

@test "one call in twenty made twice is noticed" {
    "$BGP_SOURCES/bench/count" "--dearer=VRFRD, a.b.c.d:n, out" > dearer
    run regression --counts dearer
    [ "$status" -eq 1 ]
    [ "$(grep -c ' instructions (' <<< "$output")" -eq 1 ]
    [[ "$output" == *"VRFRD, a.b.c.d:n, out: "*"(+5."* ]]
}

@test "an operation that is missing on either side is told" {
    grep -v "ASNUM, plain, in" "$COUNTS" > fewer
    run regression --counts fewer
    [ "$status" -eq 1 ]
    [[ "$output" == *"ASNUM, plain, in: in the baseline, and not counted"* ]]
    mv fewer baseline
    run regression --counts "$COUNTS"
    [ "$status" -eq 1 ]
    [[ "$output" == *"ASNUM, plain, in: "*"not in the baseline"* ]]
}

@test "counting nothing does not pass" {
    grep -v '	' "$COUNTS" > none
    run regression --counts none
    [ "$status" -ne 0 ]
    cp none baseline
    run regression --counts none
    [ "$status" -ne 0 ]
    [[ "$output" == *"nothing was counted"* ]]
    BGP_INSTRUCTIONS=/bin/false run regression
    [ "$status" -eq 2 ]
    run regression --counts nowhere
    [ "$status" -eq 2 ]
    rm baseline
    run regression --counts "$COUNTS"
    [ "$status" -eq 2 ]
}

@test "a baseline of another compiler or C library is not compared, which is told" {
    for line in 's/^libc .*/libc 2.99/' 's/^compiler .*/compiler 99.1/' 's/^processor .*/processor vax/'; do
        sed -i "$line" baseline
        change "VRFRT, AS:n, in" 2
        sed -i "$line" baseline
        run regression --counts "$COUNTS"
        [ "$status" -eq 0 ]
        [[ "$output" == "speed: left out. "*" here "* ]]
        [[ "$output" != *within* ]]
    done
}

@test "--update makes the baseline anew, and tells old and new" {
    change "VRFRT, AS:n, in" 0.5
    run regression --update --counts "$COUNTS"
    [ "$status" -eq 0 ]
    [ "$(wc -l <<< "$output")" -eq 1 ]
    [[ "$output" == "speed: VRFRT, AS:n, in: "*" -> "*"(+100."* ]]
    cmp "$COUNTS" baseline
    rm baseline
    regression --update --counts "$COUNTS"
    cmp "$COUNTS" baseline
    grep -v '	' "$COUNTS" > none
    run regression --update --counts none
    [ "$status" -ne 0 ]
    cmp "$COUNTS" baseline
}

@test "usage" {
    run regression --downdate
    [ "$status" -eq 2 ]
    run regression --counts
    [ "$status" -eq 2 ]
    run "$BGP_SOURCES/bench/regression" --help
    [ "$status" -eq 0 ]
    run "$BGP_INSTRUCTIONS" --dearer=nothing
    [ "$status" -eq 2 ]
    run "$BGP_INSTRUCTIONS"
    [ "$status" -eq 3 ]
    [[ "$output" == *callgrind* ]]
}
