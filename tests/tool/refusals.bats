# bgpdt about texts that are refused: every message to the letter. BGPDT names the program under test.

bats_require_minimum_version 1.5.0

# refused TYPE TEXT, and on standard input what show says on standard error.
refused() {
    local want
    want=$(cat)
    run --separate-stderr "$BGPDT" show "$@"
    [ "$status" -eq 1 ]
    [ -z "$output" ]
    diff <(printf '%s\n' "$want") <(printf '%s\n' "$stderr")
}

@test "AS numbers and lists of them" {
    refused ASNUM 65536.1 <<'END'
bgpdt: ASNUM "65536.1" refused: the high part is at most 65535 (DT_ERR_INVALID_VALUE)
  65536.1
  ^~~~~
END
    refused ASNUM x <<'END'
bgpdt: ASNUM "x" refused: a digit is expected here (DT_ERR_INVALID_VALUE); expected STRING<1-11>
  x
  ^
END
    refused ASNUM_ENHANCE 1 2 65536.1 <<'END'
bgpdt: ASNUM_ENHANCE "1 2 65536.1" refused: item 3: the high part is at most 65535 (DT_ERR_INVALID_VALUE)
  1 2 65536.1
      ^~~~~
END
}

@test "communities of every kind" {
    refused COMMUNITY foo <<'END'
bgpdt: COMMUNITY "foo" refused: this is neither a number nor a well-known name (DT_ERR_INVALID_VALUE); expected internet, no-advertise, no-export or no-export-subconfed
  foo
  ^~~
END
    refused CMNTY_ENHANCE 1:1 65536:1 <<'END'
bgpdt: CMNTY_ENHANCE "1:1 65536:1" refused: item 2: the first half is at most 65535 (DT_ERR_INVALID_VALUE)
  1:1 65536:1
      ^~~~~
END
    refused LARGECOMMUNITY 1:2:x <<'END'
bgpdt: LARGECOMMUNITY "1:2:x" refused: a digit is expected here (DT_ERR_INVALID_VALUE)
  1:2:x
      ^
END
    refused EXTCOMMUNITY 65536:65536 <<'END'
bgpdt: EXTCOMMUNITY "65536:65536" refused: with an AS number above 65535: the assigned number is at most 65535 (DT_ERR_INVALID_VALUE)
  65536:65536
        ^~~~~
END
    refused EXTCMNTY_COMPR 1:1 <<'END'
bgpdt: EXTCMNTY_COMPR "1:1" refused: the second number is at most 0 (DT_ERR_INVALID_VALUE)
  1:1
    ^
END
}

@test "route distinguishers and targets" {
    refused VRFRT 1.2.3:4 <<'END'
bgpdt: VRFRT "1.2.3:4" refused: the separators are those of no notation (DT_ERR_INVALID_VALUE); expected a.b.c.d:n, AS:n or x.y:n
  1.2.3:4
  ^~~~~~~
END
    refused BOLRD 1:2:3 <<'END'
bgpdt: BOLRD "1:2:3" refused: the separators are those of no notation (DT_ERR_INVALID_VALUE); expected a.b.c.d:n, AS:n or x.y:n
  1:2:3
  ^~~~~
END
    refused RTPRD '*:*' <<'END'
bgpdt: RTPRD "*:*" refused: "*" may only stand for the assigned number (DT_ERR_INVALID_VALUE)
  *:*
  ^
END
    refused VPNID 1A:2 <<'END'
bgpdt: VPNID "1A:2" refused: hexadecimal digits are lower case here (DT_ERR_INVALID_VALUE)
  1A:2
   ^
END
}

@test "texts that the host reads: its refusal, and what it wants" {
    run --separate-stderr "$BGPDT" show CVRFNAME abcdefghijklmnopqrstuvwxyz0123456789
    [ "$status" -eq 1 ]
    [[ "${stderr_lines[0]}" == *' (DT_ERR_INVALID_VALUE); expected STRING<1-31>' ]]
    refused VRFID2VRFNAME x <<'END'
bgpdt: VRFID2VRFNAME "x" refused: the host, which reads these texts itself, refuses it (DT_ERR_INVALID_VALUE)
  x
  ^
END
}

@test "route keys" {
    refused EVNPREFIX 0001.0203.0405.0607.0809:4294967296 <<'END'
bgpdt: EVNPREFIX "0001.0203.0405.0607.0809:4294967296" refused: Ethernet auto-discovery: the Ethernet tag is at most 4294967295 (DT_ERR_INVALID_PARAM)
  0001.0203.0405.0607.0809:4294967296
                           ^~~~~~~~~~
END
    refused EVNPREFIX 0000.0000.0000.0000.0000 <<'END'
bgpdt: EVNPREFIX "0000.0000.0000.0000.0000" refused: Ethernet segment: an all-zero ESI is not accepted here (DT_ERR_INVALID_PARAM); expected xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx
  0000.0000.0000.0000.0000
  ^~~~~~~~~~~~~~~~~~~~~~~~
END
    refused VPNV4MCPREFIX 10.1.1.0/33 <<'END'
bgpdt: VPNV4MCPREFIX "10.1.1.0/33" refused: the mask length is at most 32 (DT_ERR_INVALID_PARAM)
  10.1.1.0/33
           ^~
END
    refused MDTPREFIX 10.1.1.0:1 <<'END'
bgpdt: MDTPREFIX "10.1.1.0:1" refused: "/" is expected here (DT_ERR_INVALID_PARAM)
  10.1.1.0:1
          ^
END
}

@test "BGP-LS: which words may stand there, and a long text cut around the place" {
    refused BGPLSPREFIX '[NODE][OSPFv2][IDENTIFIER0][LOCAL[af1]]' <<'END'
bgpdt: BGPLSPREFIX "[NODE][OSPFv2][IDENTIFIER0][LOCAL[af1]]" refused: LOCAL: no keyword begins this group (DT_ERR_INVALID_VALUE); expected as, bgp-ls-identifier, bgp-router-id, ospf-area-id, igp-router-id, member-as, ipv4-router-id or ipv6-router-id
  [NODE][OSPFv2][IDENTIFIER0][LOCAL[af1]]
                                    ^~~
END
    refused BGPLSPREFIX \
        '[NODE][OSPFv2][IDENTIFIER0][LOCAL[as100][as100][bgp-ls-identifier1.1.1.1][igp-router-id1.1.1.1]]' <<'END'
bgpdt: BGPLSPREFIX "[NODE][OSPFv2][IDENTIFIER0][LOCAL[as100][as100][bgp-ls-identifier1.1.1.1][igp-router-id1.1.1.1]]" refused: LOCAL: as may stand only once (DT_ERR_INVALID_VALUE)
  ...NODE][OSPFv2][IDENTIFIER0][LOCAL[as100][as100][bgp-ls-identifier1.1.1.1][igp...
                                             ^~
END
}

@test "BOLPREFIX: who came closest, then the answers, each told once" {
    run --separate-stderr "$BGPDT" show BOLPREFIX 10:1.1.1.0:256
    [ "$status" -eq 1 ]
    [ "${stderr_lines[0]}" = 'bgpdt: BOLPREFIX "10:1.1.1.0:256" refused: EVN came closest: IP prefix: the prefix length is at most 255 (DT_ERR_INVALID_VALUE)' ]
    [ "${stderr_lines[1]}" = '  10:1.1.1.0:256' ]
    [ "${stderr_lines[2]}" = '             ^~~' ]
    [ "${stderr_lines[3]}" = '  IPV4: the text is no IPv4 address (column 3)' ]
    [ "${stderr_lines[4]}" = '  EVN: IP prefix: the prefix length is at most 255 (column 12)' ]
    [[ "${stderr_lines[5]}" == '  NG_TYPE_2, NG_TYPE_3, NG_TYPE_4_2, NG_TYPE_4-3, NG_TYPE_5, NG_TYPE_6, NG_TYPE_4-1: '* ]]
    [ "${stderr_lines[7]}" = '  L2VPN, VPNV4MCAST, MDT: values of this type cannot be typed' ]
    [ "${stderr_lines[8]}" = '  RPD: the policy type is at most 1 (column 1)' ]
    [ "${stderr_lines[9]}" = '  SRPOLICY: "[" is expected here (column 1)' ]
    [ "${stderr_lines[10]}" = '  IPV6: the text is no IPv6 address (column 11)' ]
    [ "${stderr_lines[11]}" = '  SD-WAN: "-" is expected here (column 3)' ]
    [ "${#stderr_lines[@]}" -eq 12 ]
    run --separate-stderr "$BGPDT" show BOLPREFIX '[1][2][3]'
    [ "${stderr_lines[0]}" = 'bgpdt: BOLPREFIX "[1][2][3]" refused: SRPOLICY came closest: the endpoint is no IPv6 address (DT_ERR_INVALID_VALUE)' ]
    [ "${stderr_lines[2]}" = '         ^' ]
    # Rows with the same answer share a line though other rows stand between them.
    [[ "$stderr" == *$'\n  RPD, SD-WAN: a digit is expected here (column 1)\n'* ]]
}

@test "a mode that reads no text has no place" {
    refused --mode 4 ASNUM 1 <<'END'
bgpdt: ASNUM "1" refused: format mode 4 reads no text (DT_ERR_MODE_UNSUPPORTED); expected STRING<1-11>
END
    refused --mode 4 BOLPREFIX 1.2.3.4 <<'END'
bgpdt: BOLPREFIX "1.2.3.4" refused: format mode 4 reads no text (DT_ERR_INVALID_VALUE); expected X.X.X.X
  IPV4, EVN, NG_TYPE_2, NG_TYPE_3, NG_TYPE_4_2, NG_TYPE_4-3, NG_TYPE_5, NG_TYPE_6, VRFRTEXT, RPD, NG_TYPE_4-1, SRPOLICY, IPV6, SD-WAN: format mode 4 reads no text
  L2VPN, VPNV4MCAST, MDT: values of this type cannot be typed
END
}

@test "convert: line and column, with the type in the line and without" {
    cd "$BATS_TEST_TMPDIR"
    printf 'ASNUM\t7\nASNUM\t65536.1\nCMNTY_ENHANCE\t 1:1  1:65536\nBOLPREFIX\t10:1.1.1.0:256\nNOSUCH\t1\n' > in
    run --separate-stderr "$BGPDT" convert --format none in
    [ "$status" -eq 1 ]
    [ "${stderr_lines[0]}" = 'in:2:7: ASNUM "65536.1" refused: the high part is at most 65535 (DT_ERR_INVALID_VALUE)' ]
    [ "${stderr_lines[1]}" = 'in:3:23: CMNTY_ENHANCE " 1:1  1:65536" refused: item 2: the second half is at most 65535 (DT_ERR_INVALID_VALUE)' ]
    [ "${stderr_lines[2]}" = 'in:4:22: BOLPREFIX "10:1.1.1.0:256" refused: EVN came closest: IP prefix: the prefix length is at most 255 (DT_ERR_INVALID_VALUE)' ]
    [ "${stderr_lines[3]}" = 'in:5: NOSUCH "1" refused: no such type' ]
    [ "${#stderr_lines[@]}" -eq 5 ]
    run --separate-stderr bash -c 'printf "7\n1.65536\n" | "$BGPDT" convert --format none --type ASNUM'
    [ "${stderr_lines[0]}" = 'standard input:2:3: ASNUM "1.65536" refused: the low part is at most 65535 (DT_ERR_INVALID_VALUE)' ]
}

@test "in JSON: keys that do not change" {
    cd "$BATS_TEST_TMPDIR"
    printf '%s\t%s\n' ASNUM 65536.1 CMNTY_ENHANCE '1:1 x' BOLPREFIX 10:1.1.1.0:256 NOSUCH 1 > in
    cat > golden <<'END'
{"line":1,"type":"ASNUM","text":"65536.1","code":8394509,"error":"DT_ERR_INVALID_VALUE","reason":{"rule":"too-large","words":"the high part is at most 65535","what":"the high part","where":null,"limit":65535,"offset":0,"length":5,"item":null,"expected":[]}}
{"line":2,"type":"CMNTY_ENHANCE","text":"1:1 x","code":8394509,"error":"DT_ERR_INVALID_VALUE","reason":{"rule":"unknown-name","words":"this is neither a number nor a well-known name","what":null,"where":null,"limit":0,"offset":4,"length":1,"item":2,"expected":["internet","no-advertise","no-export","no-export-subconfed"]}}
{"line":3,"type":"BOLPREFIX","text":"10:1.1.1.0:256","code":8394509,"error":"DT_ERR_INVALID_VALUE","reason":{"rule":"too-large","words":"IP prefix: the prefix length is at most 255","what":"the prefix length","where":"IP prefix","limit":255,"offset":11,"length":3,"item":null,"expected":[]},"closest":"EVN"}
{"line":4,"type":"NOSUCH","text":"1","code":8394511,"error":"no such type","reason":null}
END
    "$BGPDT" convert --quiet in > out 2> sum || [ $? -eq 1 ]
    diff golden out
    run --separate-stderr "$BGPDT" --json show ASNUM x
    [ "$status" -eq 1 ]
    cat > golden <<'END'
{
  "type": "ASNUM",
  "text": "x",
  "code": 8394509,
  "error": "DT_ERR_INVALID_VALUE",
  "meaning": "not a value of the type",
  "help": "STRING<1-11>",
  "reason": {
    "rule": "digit",
    "words": "a digit is expected here",
    "what": null,
    "where": null,
    "limit": 0,
    "offset": 0,
    "length": 1,
    "item": null,
    "expected": []
  },
  "closest": null,
  "tried": []
}
END
    diff golden <(printf '%s\n' "$output")
}

@test "what a terminal obeys does not reach it, in any format" {
    cd "$BATS_TEST_TMPDIR"
    refused ASNUM $'1\e[31m' <<'END'
bgpdt: ASNUM "1\x1b[31m" refused: this character does not belong here (DT_ERR_INVALID_VALUE)
  1\x1b[31m
   ^~~~
END
    # An escape character, its 8-bit twin in UTF-8, a delete.
    printf 'ASNUM\t\033[2J\302\233\177\nAS\033[1mNUM\t1\n' > in
    for format in jsonl tsv; do
        run "$BGPDT" convert --format "$format" in
        [ "$status" -eq 1 ]
        [[ "$output" == *'ASNUM "\x1b[2J\xc2\x9b\x7f" refused'* ]]
        [[ "$output" == *'AS\x1b[1mNUM "1" refused: no such type'* ]]
        [ -z "$(tr -d '\12\11\40-\176' <<< "$output")" ]
    done
    run "$BGPDT" --json show ASNUM $'\e\302\233\177'
    [[ "$output" == *'"text": "\u001b\u009b\u007f"'* ]]
    run "$BGPDT" show $'NO\eSUCH' 1
    [ "$status" -eq 2 ]
    [[ "$output" == *'no data type NO\x1bSUCH'* ]]
}

@test "the refusal that the README shows" {
    readme=$BATS_TEST_DIRNAME/../../README.md
    example=$(grep -B 1 -A 2 '^bgpdt: ' "$readme")
    command=$(sed -n '1s/^\$ bgpdt //p' <<< "$example")
    [ -n "$command" ]
    # The words of the example are plain, so splitting them at blanks is what a shell would do.
    # shellcheck disable=SC2086
    run --separate-stderr "$BGPDT" $command
    diff <(sed 1d <<< "$example") <(printf '%s\n' "$stderr")
}
