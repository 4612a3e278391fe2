# bgpdt show: what it says about values of every family. BGPDT names the program under test.

bats_require_minimum_version 1.5.0

# Each argument must stand in what was printed.
has() {
    local want
    for want in "$@"; do
        if [[ "$output" != *"$want"* ]]; then
            printf 'missing: %s\nin:\n%s\n' "$want" "$output"
            return 1
        fi
    done
}

hasnot() {
    local unwanted
    for unwanted in "$@"; do
        if [[ "$output" == *"$unwanted"* ]]; then
            printf 'there is: %s\nin:\n%s\n' "$unwanted" "$output"
            return 1
        fi
    done
}

show() {
    run --separate-stderr "$BGPDT" show "$@"
    [ "$status" -eq 0 ]
    [ -z "$stderr" ]
}

# Refused values say so on standard error, with status 1; has() then looks there.
refuse() {
    run --separate-stderr "$BGPDT" show "$@"
    [ "$status" -eq 1 ]
    [ -z "$output" ]
    output=$stderr
}

# ------------------------------------------------------------------------------------------------ communities

@test "COMMUNITY: well-known names, ordinary ones, reserved ranges" {
    show COMMUNITY no-export
    has 'stored    01ffffff00000000 (8 bytes)' '"no-export" (mode 1,2,6)' '65535:65281, NO_EXPORT (RFC 1997)'
    show COMMUNITY 65535:666
    has '65535:666, BLACKHOLE (RFC 7999)'
    show COMMUNITY 65535:0
    has 'GRACEFUL_SHUTDOWN (RFC 8326)'
    show COMMUNITY 64512:7
    has '64512:7, AS 64512 (private use (RFC 6996)), local value 7' 'network   fc00000700000001'
    show COMMUNITY 65535:1234
    has 'in a reserved range (RFC 1997)'
}

@test "CMNTY_ENHANCE and ASNUM_ENHANCE: their items one by one" {
    show CMNTY_ENHANCE '100:1 no-export'
    has '1. 100:1, AS 100, local value 1' '2. 65535:65281, NO_EXPORT'
    hasnot '3. '
    show ASNUM_ENHANCE 100 65536 1.5
    has '"100 65536 1.5" (mode' '1. AS 100' '2. AS 65536 (for documentation (RFC 5398))' '3. AS 65541'
    hasnot '4. AS'
}

@test "LARGECOMMUNITY" {
    show LARGECOMMUNITY 64496:1:2
    has 'stored    f0fb0000010000000200000000000000 (16 bytes)' \
        'large community (RFC 8092): global administrator AS 64496 (for documentation (RFC 5398)), local data 1 and 2'
}

@test "EXTCOMMUNITY: route targets, origins, OSPF, color, bandwidth, unknown kinds" {
    show EXTCOMMUNITY 100:1
    has '000200640000000101000000' '0x0002: route target (RFC 4360); transitive, two-octet AS specific (RFC 4360)' \
        'AS 100, assigned number 1; typed in 2-byte AS form'
    show EXTCOMMUNITY 1.2.3.4:65535
    has '0x0102: route target' 'IPv4 address 1.2.3.4, assigned number 65535'
    show EXTCOMMUNITY --hex 0103c0000201000900000000
    has '"SoO <192.0.2.1 : 9>"' '0x0103: route origin (RFC 4360)' 'IPv4 address 192.0.2.1, assigned number 9'
    show EXTCOMMUNITY --hex 030600000001050700000000
    has '"OSPF RT <0.0.0.1 : 7 : 5>"' 'OSPF area 0.0.0.1, route type 5 (external), options 7'
    show EXTCOMMUNITY --hex 8001c0000201000000000000
    has 'router id 192.0.2.1'
    show EXTCOMMUNITY --hex 030b0000 00000064 00000000
    has '0x030b: color (RFC 9012)' 'color 100'
    show EXTCOMMUNITY --hex 030e5ba0 000003e8 00000000
    has '"as-trans:1000"' '1000 bytes a second, 8000 bits a second'
    show EXTCOMMUNITY --hex 9999 ...
    has 'DT_ERR_FAIL (mode 0,1,2,3,5,6)' '0x9999: unknown sub-type; unknown type'
}

@test "SOO, EXTCMNTY_COMPR, EXTCOMMUNITY_BW" {
    show SOO 100:1
    has '0x0003: route origin (RFC 4360)' 'AS 100, assigned number 1'
    show EXTCMNTY_COMPR 100:0
    has 'compressed extended community, cpi 100'
    show EXTCOMMUNITY_BW --hex 0000 6400 e803000000000000
    has '"100:1000" (mode 1,2,6)' 'link bandwidth of AS 100: 1000 bytes a second, 8000 bits a second' \
        'network   0000006400000000000003e8'
}

@test "ATTRIDBITMAP prints through a list that is made of the set" {
    show ATTRIDBITMAP --hex 8e0e ...
    has '"Attribute IDs: 1 to 3 7 9 to 11\r\n" (mode 0,1,5,6)' 'nothing (mode 2,3)' 'attributes 1 2 3 7 9 10 11'
    show ATTRIDBITMAP --hex ...
    has 'nothing (mode 0,1,2,3,5,6)' 'no attribute'
    # Were it taken for a list itself, this one would claim 65535 items.
    show ATTRIDBITMAP --hex ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff
    has '"Attribute IDs: 0 to 255\r\n"'
    show ATTRIDBITMAP --json --hex 06 ...
    has '"text": "Attribute IDs: 1 to 2\r\n"'
}

# -------------------------------------------------------------------------------- distinguishers, targets and names

@test "VRFRT: the four notations" {
    show VRFRT 64512:1
    has 'stored    0002fc000000000101000000 (12 bytes)' 'lua       {RtType=1, RtValue={0, 2, 252, 0, 0, 0, 0, 1}}' \
        'two-octet AS specific (RFC 4360): AS 64512 (private use (RFC 6996)), assigned number 1; typed as a plain AS'
    show VRFRT 4200000001:5
    has 'four-octet AS specific (RFC 5668): AS 4200000001 (private use (RFC 6996)), assigned number 5'
    show VRFRT 1.2:3
    has 'AS 65538' 'typed as a dotted AS number'
    show VRFRT 192.0.2.1:9
    has 'IPv4 address specific (RFC 4360): IPv4 address 192.0.2.1, assigned number 9; typed in IPv4 form'
    show VRFRTV6 2001:db8::1.1
    has 'IPv6 address specific (RFC 5701): 2001:db8::1, local administrator 1'
}

@test "VRFRD, BOLRD, RTPRD" {
    show VRFRD 65536:1
    has 'stored    000200010000000102000000 (12 bytes)' \
        'route distinguisher type 2 (RFC 4364): AS 65536 (for documentation (RFC 5398)), assigned number 1'
    show VRFRD 1.2.3.4:5
    has 'route distinguisher type 1 (RFC 4364): IPv4 address 1.2.3.4, assigned number 5; typed in IPv4 form'
    show VRFRD --hex 0003 ...
    has 'route distinguisher of unknown type 3'
    show BOLRD 100:1
    has 'route distinguisher type 0 (RFC 4364): AS 100, assigned number 1'
    show RTPRD '100:*'
    has 'wildcard: matches any assigned number'
}

@test "VPNID, SID_STRUCTURE, TIME_RANGE, CVRFNAME, a name-index type" {
    show VPNID 1a2b3c:10
    has 'OUI 1A-2B-3C, VPN index 16'
    show SID_STRUCTURE --hex 20101000000001
    has '"32-16-16-0-0-0"' 'locator block 32, locator node 16, function 16, argument 0'
    show SID_STRUCTURE --hex 20101000000000
    has '"-"' 'no SID structure is present'
    show TIME_RANGE 1d2h3m4s
    has '93784 seconds: 1 days 2 hours 3 minutes 4 seconds'
    show CVRFNAME abc
    has 'stored    6162630000000000000000000000000000000000000000000000000000000000 (32 bytes)' \
        '"abc" (mode 1,6)' 'raw 0000040061626300 (mode 2)'
    show CVRFNAME --hex 61000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000 07000000 01000000
    has '"a" (mode 1,6)' 'raw 010002003700000002006100 (mode 2)' 'at  32,  4: 7'
    refuse CVRFNAME abcdefghijklmnopqrstuvwxyz0123456789
    has 'expected STRING<1-31>'
    show VRFID2VRFNAME 7
    has 'stored    07000000 (4 bytes)'
}

# ------------------------------------------------------------------------------------------------------ route keys

@test "BOLPREFIX: every sub-type that can be typed, and what it is a key of" {
    show BOLPREFIX 10.1.2.3
    has 'sub-type 0, IPV4: VPLS auto-discovery (RFC 6074)' 'PE address 10.1.2.3'
    show BOLPREFIX 10:1.1.1.0:24
    has 'sub-type 1, EVN: EVPN' 'EVPN route type 5, IP prefix (RFC 9136)'
    show BOLPREFIX 65000
    has 'sub-type 2, NG_TYPE_2: NG-MVPN inter-AS I-PMSI A-D route (type 2 of RFC 6514)' \
        'source AS 65000 (private use (RFC 6996))'
    show BOLPREFIX 1.1.1.1:225.1.1.1:3.3.3.3
    has 'sub-type 3, NG_TYPE_3: NG-MVPN S-PMSI A-D route (type 3' 'source 1.1.1.1, group 225.1.1.1, originator 3.3.3.3'
    show BOLPREFIX 100:10.1.1.1
    has 'sub-type 4, NG_TYPE_4_2: NG-MVPN leaf A-D route' 'inter-AS' 'source AS 100, originator 10.1.1.1'
    show BOLPREFIX 1.1.1.1:225.1.1.1:3.3.3.3:4.4.4.4
    has 'sub-type 5, NG_TYPE_4-3: NG-MVPN leaf A-D route' 'S-PMSI' \
        'originator of the route 3.3.3.3, originator of the leaf route 4.4.4.4'
    show BOLPREFIX 2001::1-ff0e::1
    has 'sub-type 6, NG_TYPE_5: NG-MVPN source active A-D route (type 5' 'source 2001::1, group ff0e::1'
    show BOLPREFIX 1.5:1.1.1.1:225.2.2.2
    has 'sub-type 7, NG_TYPE_6: NG-MVPN source tree join (type 7' 'shared tree join (type 6)' \
        'source AS 65541 (for documentation (RFC 5398)), source 1.1.1.1, group 225.2.2.2'
    show BOLPREFIX 100:1
    has 'sub-type 8, VRFRTEXT: route target' 'two-octet AS specific (RFC 4360): AS 100, assigned number 1'
    show BOLPREFIX 0a0b-0c0d-0e0f
    has 'ES-import route target (RFC 7432): 0a:0b:0c:0d:0e:0f'
    show BOLPREFIX 0/0.0.0.0/5
    has 'sub-type 12, RPD: route policy distribution' 'policy type 0, peer 0.0.0.0 (all peers), distinguisher 5'
    show BOLPREFIX 10.1.1.1:10.2.2.2
    has 'sub-type 13, NG_TYPE_4-1: NG-MVPN leaf A-D route' 'intra-AS' 'originator of the leaf route 10.2.2.2'
    show BOLPREFIX '[1][100][10.0.0.1]'
    has 'sub-type 14, SRPOLICY: SR policy (SAFI 73, RFC 9830)' 'distinguisher 1, colour 100, endpoint 10.0.0.1'
    show BOLPREFIX 2001:db8::1
    has 'sub-type 15, IPV6: IPv6 address' 'address 2001:db8::1'
    show BOLPREFIX 1-100-200-2001:db8::5
    has 'sub-type 16, SD-WAN' 'route type 1, port-local id 100, site 200, node 2001:db8::5'
}

@test "BOLPREFIX: sub-types that cannot be typed, and unknown ones" {
    show BOLPREFIX --hex 09000000 0a00 0300 ...
    has '"10/3"' 'sub-type 9, L2VPN: BGP layer-2 VPN (RFC 4761)' 'site (VE) 10, label block from site 3 on'
    show BOLPREFIX --hex 0a000000 0001010a 18000000 ...
    has 'sub-type 10, VPNV4MCAST: VPNv4 multicast (SAFI 129, RFC 6514)' 'prefix 10.1.1.0/24'
    show BOLPREFIX --hex 0b000000 0101010a 010101e1 20000000 ...
    has 'sub-type 11, MDT: multicast distribution tree (SAFI 66, RFC 6037)' \
        'PE 10.1.1.1, prefix length 32, default group 225.1.1.1'
    show BOLPREFIX --hex 11000000 ...
    has 'DT_ERR_INVALID_VALUE (mode 0,1,2,3,4,5,6)' 'unknown sub-type 17'
}

@test "BOLPREFIX: what is odd about a key" {
    show BOLPREFIX 1.1.1.1:2.2.2.2:3.3.3.3
    has 'group 2.2.2.2 (no multicast address)'
    show BOLPREFIX 1.1.1.1:1.1.1.400
    has 'originator of the leaf route 0.0.0.0 (unspecified)'
    show BOLPREFIX '[1][2][::]'
    has 'endpoint :: (the null endpoint: any, RFC 9256)'
    show BOLPREFIX --hex 0a000000 0101010a 18000000 ...
    has 'prefix 10.1.1.1/24 (with bits set behind the prefix)'
}

@test "BOLPREFIX: the sub-types that were asked, in the order of the table" {
    show BOLPREFIX 1-100-200-10.1.1.1
    tried=$(sed -n '/^  tried/,/^  stored/p' <<< "$output" | sed '$d; s/^  tried *//; s/^ *//')
    [ "$(cut -d: -f1 <<< "$tried")" = "$(cat <<'NAMES'
IPV4
EVN
NG_TYPE_2, NG_TYPE_3, NG_TYPE_4_2, NG_TYPE_4-3, NG_TYPE_5, NG_TYPE_6, NG_TYPE_4-1
VRFRTEXT
L2VPN, VPNV4MCAST, MDT
RPD
SRPOLICY
IPV6
SD-WAN
NAMES
)" ]
    output=$tried
    has 'IPV4: the text is no IPv4 address (column 2)' \
        'EVN: the separators are those of no EVPN route (column 1); expected ESI:tag, tag:maclen:MAC:iplen:IP' \
        'L2VPN, VPNV4MCAST, MDT: values of this type cannot be typed' 'RPD: "/" is expected here (column 2)' \
        'SD-WAN: takes the text'
}

@test "BOLPREFIX: the winner ends the walk, and the shared parser tells its sub-type" {
    show BOLPREFIX 10.1.2.3
    has 'tried     IPV4: takes the text'
    hasnot 'EVN:'
    show BOLPREFIX 10.1.1.1:10.2.2.2
    has 'NG_TYPE_4-1: takes the text'
    hasnot 'NG_TYPE_2' 'VRFRTEXT:'
    show --json BOLPREFIX 10.1.1.1:10.2.2.2
    has '"tried": [' '"rule": "ipv4"' '"words": "the text is no IPv4 address"'
    tried=$(sed -n '/"tried"/,$p' <<< "$output" | tr -d ' \n')
    [[ "$tried" == *'{"subTypes":["NG_TYPE_4-1"],"code":0,"reason":null}]}' ]]
    show ASNUM 100
    hasnot tried
}

@test "EVNPREFIX: the eight route types" {
    show EVNPREFIX 0001.0203.0405.0607.0809:4294967295
    has 'route type 1, Ethernet auto-discovery (RFC 7432)' \
        'ESI type 0, set by the operator: value 01:02:03:04:05:06:07:08:09' 'MAX-ET: of the whole Ethernet segment'
    show EVNPREFIX 1:48:00e0-fc12-3456:32:10.1.1.1
    has 'route type 2, MAC/IP advertisement (RFC 7432)' 'Ethernet tag 1' 'MAC 00:e0:fc:12:34:56' 'IP 10.1.1.1'
    hasnot 'length 32'
    show EVNPREFIX '10:128:[2001::1]'
    has 'route type 3, inclusive multicast Ethernet tag (RFC 7432)' 'Ethernet tag 10' 'originator 2001::1'
    show EVNPREFIX 0100.1122.3344.5566.7788:32:1.1.1.1
    has 'route type 4, Ethernet segment (RFC 7432)' \
        'ESI type 1, from LACP: CE system MAC 00:11:22:33:44:55, port key 26231' 'originator 1.1.1.1'
    show EVNPREFIX '10:[2001::]:64'
    has 'route type 5, IP prefix (RFC 9136)' 'prefix 2001::/64'
    show EVNPREFIX 10:0:0.0.0.0:32:224.1.1.1:32:2.2.2.2
    has 'route type 6, selective multicast Ethernet tag (RFC 9251)' 'source any, group 224.1.1.1' 'originator 2.2.2.2'
    show EVNPREFIX 0101.0203.0405.0607.0809:10:32:1.1.1.1:32:224.1.1.1:32:2.2.2.2
    has 'route type 7, multicast membership report synch (RFC 9251)' 'source 1.1.1.1, group 224.1.1.1'
    show EVNPREFIX 0101.0203.0405.0607.0809:10:32:1.1.1.1:32:224.1.1.1:32:2.2.2.2:77
    has 'route type 8, multicast leave synch (RFC 9251)' 'leave group synchronization number 77'
}

@test "EVNPREFIX: ESI types and lengths that are not those of an address" {
    show EVNPREFIX 0000.0000.0000.0000.0000:7
    has 'ESI 0: a single-homed site'
    show EVNPREFIX 0200.1122.3344.5580.0000:7
    has 'ESI type 2, from the spanning tree of a bridged LAN: root bridge MAC 00:11:22:33:44:55, root priority 32768'
    show EVNPREFIX 0300.1122.3344.5500.0007:7
    has 'ESI type 3, from a MAC address: system MAC 00:11:22:33:44:55, local discriminator 7'
    show EVNPREFIX 040a.0101.0100.0000.0700:7
    has 'ESI type 4, from a router id: router id 10.1.1.1, local discriminator 7'
    show EVNPREFIX 0500.00fd.e900.0000.0700:7
    has 'ESI type 5, from an AS number: AS 65001, local discriminator 7'
    show EVNPREFIX 0600.0000.0000.0000.0001:7
    has 'ESI of unknown type 6, value 00:00:00:00:00:00:00:00:01'
    show EVNPREFIX 0100.0000.0000.0000.0001
    has 'originator none given'
    show EVNPREFIX 1:0:00e0-fc12-3456:0:10.1.1.1
    has '(length 0, not 48 bits)' 'IP none'
    show EVNPREFIX 1:48:00e0-fc12-3456:24:10.1.1.1
    has 'IP 10.1.1.1 (length 24, not the 32 bits of an address)'
    show EVNPREFIX '10:64:[2001::1]'
    has 'originator 2001::1 (length 64, not the 128 bits of an address)'
    show EVNPREFIX 10:1.1.1.0:33
    has 'prefix 1.1.1.0/33 (longer than the 32 bits of an address)'
    show EVNPREFIX 10:0.0.0.0:0
    has 'prefix 0.0.0.0/0 (the default route)'
    show EVNPREFIX --hex 01000000 09 ...
    has 'DT_ERR_FAIL (mode' 'EVPN route of an unknown type'
    show EVNPREFIX --hex 02000000 64 ...
    has 'values of this type are of sub-type 1, EVN' 'sub-type 2, NG_TYPE_2'
}

@test "EVNPREFIX: a refused text, and the route type that it was read as" {
    refuse EVNPREFIX 0001.0203.0405.0607.0809:4294967296
    has 'refused: Ethernet auto-discovery: '
    refuse EVNPREFIX 1:256:00e0-fc12-3456:32:10.1.1.1
    has 'refused: MAC/IP advertisement: '
    refuse EVNPREFIX 10:256:1.1.1.1
    has 'refused: inclusive multicast Ethernet tag: '
    refuse EVNPREFIX 0000.0000.0000.0000.0000
    has 'refused: Ethernet segment: '
    refuse EVNPREFIX '10:[2001::]:'
    has 'refused: IP prefix: '
    refuse EVNPREFIX 10:32:1.1.1.1:0:224.1.1.1:32:2.2.2.2
    has 'refused: selective multicast Ethernet tag: the group length is at least 1 '
    refuse EVNPREFIX 0201.0203.0405.0607.0809:10:32:1.1.1.1:32:224.1.1.1:32:2.2.2.2
    has 'refused: multicast membership report synch: the ESI type is at most 1 here '
    refuse EVNPREFIX 0201.0203.0405.0607.0809:10:32:1.1.1.1:32:224.1.1.1:32:2.2.2.2:77
    has 'refused: multicast leave synch: '
    refuse EVNPREFIX 10.1.2.3
    has 'the separators are those of no EVPN route' 'expected ESI:tag, '
}

@test "L2VPNPREFIX, VPNV4MCPREFIX, MDTPREFIX: 89 bytes, though less is registered" {
    show L2VPNPREFIX --hex 09000000 0a00 0300 ...
    has '(89 bytes)' '"10/3"' 'check     DT_OK' 'site (VE) 10, label block from site 3 on'
    show VPNV4MCPREFIX 10.1.1.0/24
    has 'stored    0a0000000001010a18000000' '(89 bytes)' 'network   0a01010000000018' 'prefix 10.1.1.0/24'
    show MDTPREFIX 10.1.1.1/32
    has 'stored    0b0000000101010a0000000020000000' 'network   0a0101010000000000000020' \
        'PE 10.1.1.1, prefix length 32, default group not given'
}

@test "L2VPNPREFIX takes any text and makes nothing of it: that is said" {
    refuse L2VPNPREFIX 1/2
    has 'L2VPNPREFIX "1/2" refused: the type answers 0 to any text (no value is made of it)' 'with --hex'
    run --separate-stderr "$BGPDT" show --json L2VPNPREFIX 1/2
    [ "$status" -eq 1 ]
    has '"code": 0' '"error": "no value is made of it"'
    printf '1/2\n' > "$BATS_TEST_TMPDIR/in"
    run --separate-stderr "$BGPDT" convert --type L2VPNPREFIX "$BATS_TEST_TMPDIR/in"
    [ "$status" -eq 1 ]
    [ "$output" = '{"line":1,"type":"L2VPNPREFIX","text":"1/2","code":0,"error":"no value is made of it","reason":null}' ]
    [[ "$stderr" == *'0 accepted'*'1 refused (no value is made of it 1)'* ]]
    run "$BGPDT" convert --quiet --format tsv --type L2VPNPREFIX "$BATS_TEST_TMPDIR/in"
    [ "${lines[0]}" = "$(printf '1\tL2VPNPREFIX\t1/2\tno value is made of it\t\t')" ]
}

# ---------------------------------------------------------------------------------------------------------- BGP-LS

@test "BGPLSPREFIX: nodes of IS-IS" {
    show BGPLSPREFIX \
        '[NODE][ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as100][bgp-ls-identifier1.1.1.1][igp-router-id0000.0000.0001.00]]'
    has 'NLRI type 1, node (RFC 9552), from IS-IS level 1, instance 0' \
        'local node: AS 100, BGP-LS identifier 1.1.1.1, IGP router id 0000.0000.0001.00 (system 0000.0000.0001)' \
        'stLocIgpRtId               at  32, 50: 0000.0000.0001.00' \
        'network   00000001000000010000000000000000000000640000000001010101'
    show BGPLSPREFIX '[NODE][ISIS-LEVEL-2][IDENTIFIER7][LOCAL[as1.0][igp-router-id4142.4344.4546.47]]'
    has 'from IS-IS level 2, instance 7' 'AS 65536 (for documentation (RFC 5398)), no BGP-LS identifier given' \
        'IGP router id 4142.4344.4546.47 (pseudonode 71 of a LAN, made by system 4142.4344.4546)'
}

@test "BGPLSPREFIX: nodes of OSPF" {
    show BGPLSPREFIX '[NODE][OSPFv2][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id49.50.51.52]]'
    has 'local node: no AS number' 'area 0.0.0.0 (backbone)' 'IGP router id 49.50.51.52 (router)'
    show BGPLSPREFIX '[NODE][OSPFv2][IDENTIFIER0][LOCAL[ospf-area-id0.0.0.1][igp-router-id1.1.1.1/2.2.2.2]]'
    has 'area 0.0.0.1, ' \
        'IGP router id 1.1.1.1/2.2.2.2 (pseudonode: designated router 1.1.1.1, its interface 2.2.2.2)'
    show BGPLSPREFIX '[NODE][OSPFv3][IDENTIFIER0][LOCAL[igp-router-id1.1.1.1/0.0.0.9]]'
    has '(pseudonode: designated router 1.1.1.1, its interface 9)'
}

@test "BGPLSPREFIX: links" {
    show BGPLSPREFIX "[LINK][OSPFv2][IDENTIFIER5][LOCAL[as100][ospf-area-id0.0.0.1][igp-router-id0.1.1.1]]\
[REMOTE[as100][igp-router-id0.2.2.2]][LINK[identifier0.0.0.1.0.0.0.2][local10.1.1.1][remote10.1.1.2]]"
    has 'NLRI type 2, link (RFC 9552), from OSPFv2, instance 5' 'remote node: AS 100' 'IGP router id 0.2.2.2 (router)' \
        'link identifiers: local 1, remote 2' 'link: interface 10.1.1.1, neighbour 10.1.1.2' 'no multi-topology id'
    show BGPLSPREFIX "[LINK][ISIS-LEVEL-2][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0]][REMOTE[as100]]\
[LINK[if-addressfe80::1][peer-addressfe80::2][mt-id2]]"
    has 'link: interface fe80::1, neighbour fe80::2' 'multi-topology id 2, IPv6 unicast (RFC 5120)'
    show BGPLSPREFIX "[LINK][BGP][IDENTIFIER0][LOCAL[as65001][bgp-router-id1.1.1.1][member-as65101]]\
[REMOTE[as65002][bgp-ls-identifier9.9.9.9][bgp-router-id2.2.2.2]]\
[LINK[identifier0.0.0.1.0.0.0.2][local10.1.1.1][remote10.1.1.2]]"
    has 'from BGP (RFC 9086)' 'BGP router id 1.1.1.1, member AS 65101 (private use (RFC 6996))' \
        'BGP-LS identifier 9.9.9.9, BGP router id 2.2.2.2'
}

@test "BGPLSPREFIX: prefixes" {
    show BGPLSPREFIX \
        '[IPV4-PREFIX][OSPFv2][IDENTIFIER0][LOCAL[as100]][PREFIX[mt-id1][ospf-route-type2][prefix10.0.0.0/300]]'
    has 'NLRI type 3, IPv4 prefix' 'prefix 10.0.0.0/44 (longer than the 32 bits of an address)' \
        'OSPF route type 2, inter-area' 'multi-topology id 1, default multicast (RFC 4915)'
    show BGPLSPREFIX '[IPV6-PREFIX][OSPFv3][IDENTIFIER0][LOCAL[as100]][PREFIX[ospf-route-type1][prefix2001:db8::/32]]'
    has 'NLRI type 4, IPv6 prefix' 'prefix 2001:db8::/32' 'OSPF route type 1, intra-area'
}

@test "BGPLSPREFIX: TE policies and SRv6 SIDs" {
    show BGPLSPREFIX "[TEPOLICY][SEGMENT-ROUTING][IDENTIFIER0]\
[LOCAL[as100][bgp-router-id1.2.3.4][ipv4-router-id5.6.7.8][ipv6-router-id2001:db8::9]]\
[TE[protocol-origin2][Flag128][endpoint2001:db8::1][color100][originator-as65001][originator-address9.8.7.6]\
[discriminator7]]"
    has 'NLRI type 5, TE policy' 'headend router ids 5.6.7.8 and 2001:db8::9' \
        'SR policy: colour 100, endpoint 2001:db8::1' \
        'candidate path: protocol origin 2, BGP SR policy; originator AS 65001 (private use (RFC 6996)), 9.8.7.6; discriminator 7' \
        'flags 128: IPv6 endpoint, IPv4 originator'
    hasnot 'other families'
    show BGPLSPREFIX "[SRV6-SID][ISIS-LEVEL-2][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0]][SID[sidfc00::1]]"
    has 'NLRI type 6, SRv6 SID (RFC 9514)' 'SRv6 SID fc00::1'
}

@test "BGPLSPREFIX: marks, unknown NLRI types and protocols, raw bytes in a text" {
    show BGPLSPREFIX --hex 01000000 03000000 0000000000000000 64000000 00000000 01010101 ...
    has 'BGP-LS identifier 1.1.1.1 but not marked as given, so it does not print'
    show BGPLSPREFIX --hex 01000000 08000000 ...
    has 'from unknown protocol 8'
    show BGPLSPREFIX --hex 07000000 ...
    has 'unknown NLRI type 7'
    show BGPLSPREFIX '[NODE][OSPFv2][IDENTIFIER0][LOCAL[igp-router-id27.91.50.74]]'
    has '[igp-router-id\x1b[2J]'
    hasnot $'\x1b'
}

# ------------------------------------------------------------------------------------------------- stored bytes

@test "values of another length are refused, for every type that is registered" {
    run "$BGPDT" types
    [ "$status" -eq 0 ]
    types=$(awk 'NR > 1 {print $1}' <<< "$output")
    [ "$(wc -w <<< "$types")" -ge 35 ]
    for type in $types; do
        refuse --hex "$type" 01
        has "$type \"01\" refused: not the length of the type's values (DT_ERR_LENGTH); expected " ' bytes, not 1'
        show --hex "$type" 01 ...
        has "$type, type id " 'stored    0100'
    done
}

@test "lengths just beside the right one" {
    for case in EVNPREFIX:89 L2VPNPREFIX:89 VPNV4MCPREFIX:89 MDTPREFIX:89 BOLPREFIX:89 BGPLSPREFIX:228 ATTRIDBITMAP:32 \
        SID_STRUCTURE:7 EXTCOMMUNITY_BW:12 CVRFNAME:32; do
        type=${case%:*} length=${case#*:}
        bytes=$(printf '%*s' $((2 * length)) '' | tr ' ' 0)
        show --hex "$type" "$bytes"
        refuse --hex "$type" "${bytes}00"
        has "expected $length bytes, not $((length + 1))"
        refuse --hex "$type" "${bytes:2}"
        has "expected $length bytes, not $((length - 1))"
    done
}

@test "what is no hexadecimal is a usage error" {
    for bytes in 0 xy '00..' '...00'; do
        run --separate-stderr "$BGPDT" show --hex ASNUM "$bytes"
        [ "$status" -eq 2 ]
        [[ "$stderr" == *'not hexadecimal bytes'* ]]
    done
    run --separate-stderr "$BGPDT" show ATTRIDBITMAP 1
    [ "$status" -eq 2 ]
    [[ "$stderr" == *'ATTRIDBITMAP cannot be typed in; give its bytes with --hex'* ]]
}

@test "words in brackets arrive whole, in every command" {
    show BOLPREFIX '[1][2][10.0.0.1]'
    has 'text      "[1][2][10.0.0.1]"'
    cd "$BATS_TEST_TMPDIR"
    echo 'print(arg[1], arg[2])' > '[script]'
    run "$BGPDT" lua '[script]' '[1,2]' '[a]'
    [ "$status" -eq 0 ]
    [ "$output" = "$(printf '[1,2]\t[a]')" ]
    echo 100 > '[in]'
    run --separate-stderr "$BGPDT" convert --type ASNUM --output '[out]' --format '[x]' '[in]'
    [ "$status" -eq 2 ]
    run --separate-stderr "$BGPDT" convert --type ASNUM --output '[out]' '[in]'
    [ "$status" -eq 0 ]
    [ "$(wc -l < '[out]')" -eq 1 ]
}

@test "convert counts the kinds of composite values" {
    printf '10.1.2.3\n2001:db8::1\n2001:db8::2\n10:1.1.1.0:24\nx y\n' > "$BATS_TEST_TMPDIR/in"
    run --separate-stderr "$BGPDT" convert --type BOLPREFIX "$BATS_TEST_TMPDIR/in"
    [ "$status" -eq 1 ]
    [[ "${lines[3]}" == *'"text":"10:1.1.1.0:24","code":0,"kind":"EVN type 5","value":"01000000050a000000'* ]]
    [[ "$stderr" == *'accepted: EVN type 5 1, IPV4 1, IPV6 2' ]]
    run --separate-stderr "$BGPDT" convert --json --quiet --type BOLPREFIX "$BATS_TEST_TMPDIR/in"
    [[ "$stderr" == *'"kinds":{"EVN type 5":1,"IPV4":1,"IPV6":2}'* ]]
}

@test "lua: values of all lengths, and the record that FormatOut takes" {
    cat > "$BATS_TEST_TMPDIR/script.lua" <<'LUA'
print(bgp.parse("L2VPNPREFIX", "1/2"))
print(bgp.format("L2VPNPREFIX", {bolType = 9, bolSiteId = 10, bolLabelOffSet = 3}))
print(bgp.compare("VPNV4MCPREFIX", "10.1.1.0/24", {bolType = 10, bolVpnv4McastPrefix = 0, bolVpnv4McastMaskLen = 0}))
local set = {}
for i = 1, 32 do set[i] = 255 end
print((bgp.format("ATTRIDBITMAP", set, 1):gsub("\r\n", "")))
print(#bgp.bytes("CVRFNAME", "abc"))
LUA
    run --separate-stderr "$BGPDT" lua "$BATS_TEST_TMPDIR/script.lua"
    [ "$status" -eq 0 ]
    [ "${lines[0]}" = "$(printf 'nil\tDT_ERR_INVALID_VALUE')" ]
    [ "${lines[1]}" = '10/3' ]
    [ "${lines[2]}" = '1' ]
    [ "${lines[3]}" = 'Attribute IDs: 0 to 255' ]
    [ "${lines[4]}" = '32' ]
}
