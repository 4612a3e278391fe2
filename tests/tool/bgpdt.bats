# bgpdt from outside: what it prints where, and with which exit status. BGPDT names the program under test.

bats_require_minimum_version 1.5.0

setup() {
    cd "$BATS_TEST_TMPDIR"
}

@test "without a command it is a usage error, on standard error" {
    run --separate-stderr "$BGPDT"
    [ "$status" -eq 2 ]
    [ -z "$output" ]
    [[ "$stderr" == *subcommand* ]]
}

@test "help goes to standard output and lists the commands" {
    run --separate-stderr "$BGPDT" --help
    [ "$status" -eq 0 ]
    for word in types show convert lua "Exit status"; do
        [[ "$output" == *"$word"* ]]
    done
}

@test "types lists all rows" {
    run "$BGPDT" types
    [ "$status" -eq 0 ]
    [ "${#lines[@]}" -ge 36 ] # the head, and the 35 that there have always been
    [[ "${lines[10]}" == "ASNUM "*" 255 "*" 8 "*"STRING<1-11>"*"FormatIn FormatOut Check Help Compare LuaSet LuaGet Endian" ]]
}

@test "types --json is one array of an object a row" {
    run "$BGPDT" types
    rows=$((${#lines[@]} - 1))
    run "$BGPDT" types --json
    [ "$status" -eq 0 ]
    [ "$(grep -c '"name"' <<< "$output")" -eq "$rows" ]
}

@test "show tells everything about a value" {
    run "$BGPDT" show ASNUM 1.0
    [ "$status" -eq 0 ]
    [[ "$output" == *'stored    0000010001000000 (8 bytes)'* ]]
    [[ "$output" == *'"1.0" (mode 1,2,6)'* ]]
    [[ "$output" == *'raw 0000010001000000 (mode 3)'* ]]
    [[ "$output" == *'check     DT_OK'* ]]
    [[ "$output" == *'lua       {asNumValue=65536, asType=1}'* ]]
    [[ "$output" == *'network   0001000000000001'* ]]
}

@test "show takes types in either case, and stored bytes" {
    run "$BGPDT" show asnum --hex 64000000 00000000
    [ "$status" -eq 0 ]
    [[ "$output" == *'"100"'* ]]
}

@test "a refused text: status 1, the code, what was expected, on standard error" {
    run --separate-stderr "$BGPDT" show ASNUM x
    [ "$status" -eq 1 ]
    [ -z "$output" ]
    [[ "$stderr" == *'ASNUM "x" refused'*DT_ERR_INVALID_VALUE*'expected STRING<1-11>'* ]]
}

@test "an unknown type is a usage error that lists the types" {
    run --separate-stderr "$BGPDT" show NOSUCH 1
    [ "$status" -eq 2 ]
    [[ "$stderr" == *NOSUCH*ASNUM* ]]
}

@test "convert writes one JSON object a line" {
    printf 'ASNUM\t100\nTIME_RANGE\t1d2h3m4s\n' > in
    run --separate-stderr "$BGPDT" convert in
    [ "$status" -eq 0 ]
    [ "${lines[0]}" = '{"line":1,"type":"ASNUM","text":"100","code":0,"value":"6400000000000000","printed":"100"}' ]
    [ "${lines[1]}" = '{"line":2,"type":"TIME_RANGE","text":"1d2h3m4s","code":0,"value":"586e0100","printed":null}' ]
    [[ "$stderr" == "read 2 values: 2 accepted (0 printed otherwise than typed), 0 refused"* ]]
}

@test "convert goes on behind bad lines, reports each, and ends with status 1" {
    printf '# values\nASNUM\t100\nASNUM\tx\n\nNOSUCH\t1\nno tab\nASNUM\t7\n' > in
    run --separate-stderr "$BGPDT" convert in
    [ "$status" -eq 1 ]
    [ "${#lines[@]}" -eq 5 ]
    [[ "${lines[4]}" == '{"line":7,"type":"ASNUM","text":"7","code":0,'* ]]
    [[ "$stderr" == *'in:3:7: ASNUM "x" refused: a digit is expected here (DT_ERR_INVALID_VALUE); expected STRING<1-11>'* ]]
    [[ "$stderr" == *'in:5: NOSUCH "1" refused: no such type'* ]]
    [[ "$stderr" == *'in:6: '*'no tab between type and text'* ]]
    [[ "$stderr" == *'read 5 values: 2 accepted'*'3 refused'*'2 comment and blank lines'* ]]
}

@test "convert --type takes plain texts, from standard input too" {
    run --separate-stderr bash -c 'printf "1.5\r\n00007\n" | "$BGPDT" convert --type ASNUM --format tsv -'
    [ "$status" -eq 0 ]
    [ "${lines[0]}" = "$(printf '1\tASNUM\t1.5\t0\t0500010001000000\t1.5')" ]
    [ "${lines[1]}" = "$(printf '2\tASNUM\t00007\t0\t0700000000000000\t7')" ]
    [[ "$stderr" == *'(1 printed otherwise than typed)'* ]]
}

@test "convert --json sums up as one JSON object on standard error" {
    run --separate-stderr bash -c 'printf "1\nx\n" | "$BGPDT" convert --json --quiet --type ASNUM'
    [ "$status" -eq 1 ]
    [[ "$stderr" == '{"read":2,"accepted":1,"changed":0,"refused":1,"reasons":{"DT_ERR_INVALID_VALUE":1},'* ]]
}

@test "bytes that are no text do not stop a run" {
    printf '\377\376\n1\0002\n5\n' > in
    run --separate-stderr "$BGPDT" convert --type ASNUM in
    [ "$status" -eq 1 ]
    [ "${#lines[@]}" -eq 3 ]
    [[ "${lines[2]}" == *'"printed":"5"'* ]]
    [[ "$stderr" == *'a NUL character in the text'* ]]
}

@test "a line of a million characters is refused, not swallowed" {
    { head -c 1000000 /dev/zero | tr '\0' 1; echo; echo 7; } > in
    run --separate-stderr "$BGPDT" convert --type ASNUM --quiet in
    [ "$status" -eq 1 ]
    [ "${#lines[@]}" -eq 2 ]
    [[ "$stderr" == *'the line is too long 1'* ]]
}

@test "a missing file, and an output that is full, are status 4" {
    run "$BGPDT" convert no-such-file
    [ "$status" -eq 4 ]
    [[ "$output" == *no-such-file* ]]
    printf '1\n' > in
    run "$BGPDT" convert --type ASNUM --output /dev/full in
    [ "$status" -eq 4 ]
}

@test "a plug-in that does not load is status 3" {
    run "$BGPDT" --plugin ./no-such.so types
    [ "$status" -eq 3 ]
    [[ "$output" == *no-such.so* ]]
}

@test "a plug-in that does not tell of its types is status 3" {
    command -v cc > /dev/null || skip 'no C compiler'
    cat > mute.c <<'C'
#include <stdint.h>
uint32_t Bgp_InitDataType(uint32_t handle) { return handle - handle; }
C
    cc -shared -fPIC mute.c -o mute.so
    run "$BGPDT" --plugin ./mute.so types
    [ "$status" -eq 3 ]
    [[ "$output" == *'does not load: it has no Bgp_TypeAt'* ]]
}

@test "a wrong option is status 2" {
    run "$BGPDT" convert --format xml
    [ "$status" -eq 2 ]
}

@test "lua sees the types" {
    cat > script.lua <<'LUA'
local value = bgp.parse("ASNUM", "1.5")
print(value.asNumValue, value.asType, bgp.format("ASNUM", value))
print(bgp.check("ASNUM", {asNumValue = 0, asType = 0}))
print(bgp.compare("ASNUM", "5", {asNumValue = 7, asType = 0}))
print(bgp.parse("ASNUM", "x"))
print(#bgp.types(), arg[1])
LUA
    run --separate-stderr "$BGPDT" lua script.lua word
    [ "$status" -eq 0 ]
    [ "${lines[0]}" = "$(printf '65541\t1\t1.5')" ]
    [ "${lines[1]}" = "$(printf 'false\tDT_ERR_INVALID_VALUE')" ]
    [ "${lines[2]}" = "-1" ]
    [ "${lines[3]}" = "$(printf 'nil\tDT_ERR_INVALID_VALUE')" ]
    [[ "${lines[4]}" =~ ^([0-9]+)$'\t'word$ ]]
    count=${BASH_REMATCH[1]}
    run "$BGPDT" types
    [ "$count" -eq "$((${#lines[@]} - 1))" ]
}

@test "a script that fails tells where" {
    echo 'error("no")' > script.lua
    run --separate-stderr "$BGPDT" lua script.lua
    [ "$status" -eq 1 ]
    [[ "$stderr" == *script.lua:1*no* ]]
    run "$BGPDT" lua no-such.lua
    [ "$status" -eq 4 ]
}
