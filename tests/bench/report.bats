# The tables of docs/speed.md, from figures that were measured. BGP_SOURCES is the source folder.

setup() {
    cd "$BATS_TEST_TMPDIR"
    tab=$(printf '\t')
    sed "s/,/$tab/g" > times <<'END'
VRFRT,AS:n,in,plug-in,30
VRFRT,AS:n,in,floor,10
VRFRT,AS:n,in,floor+host,20
VRFRT,AS:n,in,textbook,120
VRFRT,AS:n,in,libyang,600
VRFRT,AS:n,out,plug-in,24
VRFRT,AS:n,out,floor,6
VRFRT,AS:n,out,floor+host,16
VRFRT,AS:n,compare,plug-in,5
VRFRT,AS:n,endian,plug-in,7
SOO,AS:n,in,plug-in,41
END
    sed "s/;/$tab/" > counts <<'END'
processor any
compiler 1.2
401.4;VRFRT, AS:n, in, plug-in
101;VRFRT, AS:n, in, floor
202;VRFRT, AS:n, in, floor+host
77;VRFRT, AS:n, endian, plug-in
END
    cp "$BGP_SOURCES/docs/speed.md" page
    export BGP_SPEED_PAGE=$PWD/page
}

report() {
    "$BGP_SOURCES/bench/report" --times times --counts counts
}

# The words of a page, without its tables.
words() {
    awk '/^<!-- end -->$/ { table = 0 } !table; /^<!-- measured: / { table = 1 }' "$1"
}

@test "figures become ratios and rows" {
    report
    [ "$(grep -c '^| VRFRT AS:n | 30 | 3.0 | 1.5 | 0.25 | 0.05 | 401 | 101 | 202 |$' page)" -eq 1 ]
    [ "$(grep -c '^| VRFRT AS:n | 24 | 4.0 | 1.5 |  |  |  |  |  |$' page)" -eq 1 ]
    [ "$(grep -c '^| VRFRT AS:n | 30 | 401 | 24 |  | 5 |  |$' page)" -eq 1 ]
    [ "$(grep -c '^| SOO AS:n | 41 |  |  |  |  |  |$' page)" -eq 1 ]
    [ "$(grep -c '^| VRFRT AS:n |  |  |  |  |  |  | 7 | 77 |$' page)" -eq 1 ]
    [ "$(grep -c '^| SOO' page)" -eq 1 ]
    grep -q '^Measured on .*, processor any, compiler 1.2, load average ' page
}

@test "the words of the page stay, and old tables go" {
    report
    words page > after
    words "$BGP_SOURCES/docs/speed.md" | cmp - after
    [ "$(wc -l < after)" -gt 40 ]
    cp page once
    report
    cmp page once
}

@test "a page that lacks a marker, or has one that means nothing, is left alone" {
    for change in '/measured: others/d' 's/measured: out/measured: nothing/'; do
        sed "$change" "$BGP_SOURCES/docs/speed.md" > page
        cp page before
        run report
        [ "$status" -ne 0 ]
        [[ "$output" == "report: "* ]]
        cmp page before
    done
}

@test "without figures there is no page" {
    : > times
    run report
    [ "$status" -eq 3 ]
    cmp page "$BGP_SOURCES/docs/speed.md"
    run "$BGP_SOURCES/bench/report" --times times
    [ "$status" -eq 2 ]
}
