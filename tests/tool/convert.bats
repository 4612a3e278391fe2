# bgpdt convert: fields, formats, jobs, and what input, output and signals may do. BGPDT names the program under test.

bats_require_minimum_version 1.5.0

setup() {
    cd "$BATS_TEST_TMPDIR"
}

# Texts of every outcome, many blocks of them: accepted, refused, of no type, comments, blank lines.
mixed() {
    awk -v count="$1" 'BEGIN {
        for (i = 1; i <= count; ++i) {
            if (i % 97 == 0) print "# comment " i
            else if (i % 89 == 0) print ""
            else if (i % 83 == 0) print "COMMUNITY\t65536:" i
            else if (i % 79 == 0) print "NOSUCH\t" i
            else if (i % 3 == 0) print "VRFRT\t" i % 65536 ":" i
            else if (i % 3 == 1) print "COMMUNITY\t" i % 65536 ":" i % 65521
            else print "EVNPREFIX\t0001.0203.0405.0607.0809:" i
        }
    }'
}

# until_true COMMAND...: waits for it to succeed, ten seconds at most.
until_true() {
    for _ in $(seq 200); do
        if "$@"; then
            return 0
        fi
        sleep 0.05
    done
    return 1
}

# ------------------------------------------------------------------------------------------------- fields and formats

@test "a refused line has error, reason and closest instead of value and printed" {
    run --separate-stderr bash -c 'printf "COMMUNITY\tx\nBOLPREFIX\t10:1.1.1.0:256\nNOSUCH\t1\n" | "$BGPDT" convert --quiet'
    [ "$status" -eq 1 ]
    [ "${lines[0]}" = '{"line":1,"type":"COMMUNITY","text":"x","code":8394509,"error":"DT_ERR_INVALID_VALUE","reason":{"rule":"unknown-name","words":"this is neither a number nor a well-known name","what":null,"where":null,"limit":0,"offset":0,"length":1,"item":null,"expected":["internet","no-advertise","no-export","no-export-subconfed"]}}' ]
    [[ "${lines[1]}" == '{"line":2,"type":"BOLPREFIX","text":"10:1.1.1.0:256","code":'*'"error":"DT_ERR_INVALID_VALUE","reason":{"rule":'*'},"closest":"EVN"}' ]]
    [[ "${lines[2]}" == '{"line":3,"type":"NOSUCH","text":"1","code":'*'"error":"no such type","reason":null}' ]]
}

@test "a composite value has its kind" {
    run --separate-stderr bash -c 'echo 0001.0203.0405.0607.0809:1 | "$BGPDT" convert --type EVNPREFIX'
    [ "$status" -eq 0 ]
    [[ "${lines[0]}" == '{"line":1,"type":"EVNPREFIX","text":"0001.0203.0405.0607.0809:1","code":0,"kind":"EVN type 1","value":"'*'","printed":"'*'"}' ]]
    [[ "$stderr" == *'accepted: EVN type 1 1' ]]
}

@test "--fields says which fields are written, and in which order" {
    printf '100\nx\n' > in
    run --separate-stderr "$BGPDT" convert --quiet --type ASNUM --fields printed,text in
    [ "$status" -eq 1 ]
    [ "$output" = "$(printf '{"printed":"100","text":"100"}\n{"text":"x"}')" ]
    run --separate-stderr "$BGPDT" convert --quiet --type ASNUM --fields=value in
    [ "$output" = "$(printf '{"value":"6400000000000000"}\n{}')" ]
    run --separate-stderr "$BGPDT" convert --quiet --type ASNUM --fields line,code,error,reason,closest,kind,value --format tsv in
    [ "$output" = "$(printf '1\t0\t\t\t\t\t6400000000000000\n2\tDT_ERR_INVALID_VALUE\tDT_ERR_INVALID_VALUE\ta digit is expected here\t\t\t')" ]
}

@test "all fields by name are the usual ones of JSON Lines" {
    mixed 500 > in
    "$BGPDT" convert --quiet in > usual 2> /dev/null || [ "$?" -eq 1 ]
    "$BGPDT" convert --quiet --fields line,type,text,code,error,reason,closest,kind,value,printed in > named 2> /dev/null || [ "$?" -eq 1 ]
    [ "$(wc -l < usual)" -gt 400 ]
    cmp usual named
    "$BGPDT" convert --quiet --format tsv in > usual 2> /dev/null || [ "$?" -eq 1 ]
    "$BGPDT" convert --quiet --format tsv --fields line,type,text,code,value,printed in > named 2> /dev/null || [ "$?" -eq 1 ]
    cmp usual named
}

@test "a field that is unknown, named twice or missing is a usage error" {
    for fields in text,nosuch text,value,text '' ,; do
        run --separate-stderr "$BGPDT" convert --type ASNUM --fields "$fields" /dev/null
        echo "$fields: $status $stderr"
        [ "$status" -eq 2 ]
        [ -z "$output" ]
    done
    run --separate-stderr "$BGPDT" convert --type ASNUM --fields nosuch /dev/null
    [[ "$stderr" == *nosuch*printed* ]]
}

@test "--format none writes nothing and sums up" {
    run --separate-stderr bash -c 'printf "1\nx\n" | "$BGPDT" convert --type ASNUM --format none'
    [ "$status" -eq 1 ]
    [ -z "$output" ]
    [[ "$stderr" == 'standard input:2:1: ASNUM "x" refused'*'read 2 values: 1 accepted'* ]]
}

# -------------------------------------------------------------------------------------------------------------- lines

@test "a line may end in LF, CR LF or with the file" {
    printf '1\r\n\r\n# \r\n2\n\n3\r' > in
    run --separate-stderr "$BGPDT" convert --type ASNUM --fields line,text in
    [ "$status" -eq 0 ]
    [ "$output" = "$(printf '{"line":1,"text":"1"}\n{"line":4,"text":"2"}\n{"line":6,"text":"3"}')" ]
    [[ "$stderr" == *'3 comment and blank lines'* ]]
}

@test "an empty input is no input" {
    run --separate-stderr "$BGPDT" convert --jobs 3 /dev/null
    [ "$status" -eq 0 ]
    [ -z "$output" ]
    [[ "$stderr" == 'read 0 values: 0 accepted'* ]]
}

@test "a NUL character is refused in the line that has it, and told" {
    printf '1\n2\0003\n4\n' > in
    run --separate-stderr "$BGPDT" convert --type ASNUM --fields line,text,error in
    [ "$status" -eq 1 ]
    [ "${lines[0]}" = '{"line":1,"text":"1"}' ]
    [ "${lines[1]}" = '{"line":2,"text":"2\u00003","error":"a NUL character in the text"}' ]
    [ "${lines[2]}" = '{"line":3,"text":"4"}' ]
    [ "${stderr_lines[0]}" = 'in:2: ASNUM "2\x003" refused: a NUL character in the text; expected STRING<1-11>' ]
}

@test "65536 characters are a line, one more is too long, whatever ends it" {
    long() { head -c "$1" /dev/zero | tr '\0' 1; }
    for end in '\n' '\r\n'; do
        { long 65536; printf "$end"; long 65537; printf "$end"; printf "7$end"; } > in
        run --separate-stderr "$BGPDT" convert --type ASNUM --fields line,error,printed in
        [ "$status" -eq 1 ]
        [ "${lines[0]}" = '{"line":1,"error":"DT_ERR_INVALID_VALUE"}' ]
        [ "${lines[1]}" = '{"line":2,"error":"the line is too long"}' ]
        [ "${lines[2]}" = '{"line":3,"printed":"7"}' ]
        [[ "${stderr_lines[1]}" == 'in:2: ASNUM "1111'*'1111..." refused: the line is too long; expected STRING<1-11>' ]]
    done
}

@test "a line of any length is refused in the same memory" {
    # peak MEGABYTES JOBS: the most memory, in kB, that was resident by the end of a line of so many
    peak() {
        mkfifo "fifo$1-$2"
        "$BGPDT" convert --type ASNUM --fields line,code --jobs "$2" "fifo$1-$2" > "out$1-$2" 2> /dev/null &
        local pid=$!
        exec 7> "fifo$1-$2"
        head -c "$1"M /dev/zero | tr '\0' 1 >&7
        printf '\n5\n' >&7
        until_true grep -q '"line":2' "out$1-$2"
        sed -n 's/^VmHWM:[^0-9]*\([0-9]*\) kB/\1/p' "/proc/$pid/status"
        exec 7>&-
        wait "$pid" || [ "$?" -eq 1 ]
    }
    for jobs in 1 2; do
        little=$(peak 1 $jobs)
        much=$(peak 40 $jobs)
        echo "$jobs: $little kB, $much kB"
        [ "$little" -gt 1000 ]
        [ "$much" -lt $((little + 2000)) ]
        [ "$(cut -c 1-12 "out40-$jobs")" = "$(printf '{"line":1,"c\n{"line":2,"c')" ]
    done
}

@test "one file is read, not several" {
    run --separate-stderr "$BGPDT" convert --type ASNUM /dev/null /dev/null
    [ "$status" -eq 2 ]
}

@test "what cannot be read is status 4" {
    for jobs in 1 2; do
        run --separate-stderr "$BGPDT" convert --type ASNUM --jobs $jobs .
        [ "$status" -eq 4 ]
        [ -z "$output" ]
        [ "$stderr" = 'bgpdt: .: cannot read: Is a directory' ]
    done
}

# --------------------------------------------------------------------------------------------------------------- jobs

@test "with several jobs everything is as with one, the order too" {
    mixed 100000 > in
    "$BGPDT" convert in > one 2> one.err || [ "$?" -eq 1 ]
    [ "$(wc -l < one)" -gt 90000 ]
    [ "$(wc -l < one.err)" -gt 2000 ]
    for jobs in 2 3 8; do
        "$BGPDT" convert --jobs $jobs in > many 2> many.err || [ "$?" -eq 1 ]
        cmp one many
        diff <(sed 's/; [0-9]* values a second//' one.err) <(sed 's/; [0-9]* values a second//' many.err)
    done
}

@test "from a pipe too, in pieces of any size" {
    mixed 5000 > in
    "$BGPDT" convert in > one 2> /dev/null || [ "$?" -eq 1 ]
    for jobs in 1 2; do
        dd if=in bs=37 status=none | "$BGPDT" convert --jobs $jobs > many 2> /dev/null || [ "$?" -eq 1 ]
        cmp one many
    done
}

@test "0 jobs, 65 jobs and x jobs are usage errors" {
    for jobs in 0 65 x -1; do
        run --separate-stderr "$BGPDT" convert --type ASNUM --jobs $jobs /dev/null
        [ "$status" -eq 2 ]
    done
    run "$BGPDT" convert --type ASNUM --jobs 64 /dev/null
    [ "$status" -eq 0 ]
}

@test "in one file each report stands before its record" {
    mixed 20000 > in
    for jobs in 1 3; do
        "$BGPDT" convert --fields line,error --jobs $jobs in > both 2>&1 || [ "$?" -eq 1 ]
        # Numbers of reports and records, without the summary: a report is followed by its record, which has an error.
        grep -v '^read\|^accepted' both |
            sed -n 's/^in:\([0-9]*\):.*/\1 report/p; s/^{"line":\([0-9]*\)}$/\1 fine/p; s/^{"line":\([0-9]*\),.*/\1 refused/p' > order
        [ "$(wc -l < order)" -eq "$(grep -vc '^read\|^accepted' both)" ]
        awk '$2 == "report" {told = $1; next} {if ($1 <= last || ($2 == "refused") != (told == $1)) exit 1; last = $1}' order
        [ "$(grep -c report order)" -gt 400 ]
    done
}

# ------------------------------------------------------------------------------------- output, and how it comes to an end

@test "a full device is told, at once and with status 4" {
    mixed 20000 > in
    for jobs in 1 2; do
        run --separate-stderr bash -c '"$BGPDT" convert --quiet --jobs '$jobs' in > /dev/full'
        [ "$status" -eq 4 ]
        [ "$stderr" = 'bgpdt: cannot write: No space left on device' ]
        run --separate-stderr "$BGPDT" convert --quiet --jobs $jobs --output /dev/full in
        [ "$status" -eq 4 ]
        [ "$stderr" = 'bgpdt: cannot write: No space left on device' ]
    done
}

@test "a write error ends the run though more input may come" {
    for jobs in 1 2; do
        mkfifo "fifo$jobs"
        "$BGPDT" convert --type ASNUM --jobs $jobs "fifo$jobs" > /dev/full 2> err &
        pid=$!
        exec 7> "fifo$jobs"
        echo 1 >&7
        ended() { ! kill -0 "$pid" 2> /dev/null; }
        until_true ended
        exec 7>&-
        status=0
        wait "$pid" || status=$?
        [ "$status" -eq 4 ]
        [ "$(cat err)" = 'bgpdt: cannot write: No space left on device' ]
    done
}

@test "a reader that goes away ends the run: by the signal, or told where that is ignored" {
    mixed 100000 > in
    for jobs in 1 2; do
        status=0
        (set -o pipefail; "$BGPDT" convert --quiet --jobs $jobs in 2> err | head -n 1 > first) || status=$?
        [ "$status" -eq 141 ]
        [ "$(wc -l < first)" -eq 1 ]
        status=0
        (set -o pipefail; trap '' PIPE; "$BGPDT" convert --quiet --jobs $jobs in 2> err | head -n 1 > first) || status=$?
        [ "$status" -eq 4 ]
        [ "$(cat err)" = 'bgpdt: cannot write: Broken pipe' ]
    done
}

@test "a value is answered when it comes, not when the input ends" {
    for jobs in 1 3; do
        mkfifo "fifo$jobs"
        "$BGPDT" convert --type ASNUM --fields printed --jobs $jobs "fifo$jobs" > "out$jobs" 2> "err$jobs" &
        exec 7> "fifo$jobs"
        for value in 1 2 x 3; do
            echo $value >&7
        done
        until_true grep -q '"3"' "out$jobs"
        grep -q 'fifo.:3:1: ASNUM "x" refused' "err$jobs"
        exec 7>&-
        wait $! || [ "$?" -eq 1 ]
    done
}

@test "interrupted, it leaves whole lines" {
    for jobs in 1 2; do
        mkfifo "fifo$jobs"
        # A job of a script ignores the interrupt; env gives it back.
        env --default-signal=INT "$BGPDT" convert --jobs $jobs "fifo$jobs" > "out$jobs" 2> /dev/null &
        pid=$!
        exec 7> "fifo$jobs"
        mixed 50000 >&7
        printf 'ASNUM\t1' >&7
        until_true test "$(stat -c %s "out$jobs")" -gt 100000
        kill -INT "$pid"
        status=0
        wait "$pid" || status=$?
        exec 7>&-
        [ "$status" -eq 130 ]
        [ "$(tail -c 2 "out$jobs")" = '}' ]
    done
}
