# The man page and the program know the same commands and options. BGPDT names the program under test.

bats_require_minimum_version 1.5.0

setup() {
    page="$BATS_TEST_DIRNAME/../../man/bgpdt.1.scd"
}

# The options that a help text lists, long and short, one a line.
options_of() {
    "$BGPDT" "$@" --help | sed -n '/^Options:/,/^$/s/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n'
}

# The part of the page between two headings.
section() {
    awk -v from="$1" '/^#/ {inside = ($0 == from)} inside' "$page"
}

@test "every option of the program stands in the page, under OPTIONS" {
    options=$(options_of)
    [ "$(wc -w <<< "$options")" -ge 5 ]
    for option in $options; do
        echo "$option"
        section '# OPTIONS' | grep -F -- "*$option*"
    done
}

@test "every option of every command stands in the page, under the command" {
    commands=$("$BGPDT" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
    [ "$(wc -w <<< "$commands")" -ge 4 ]
    count=0
    for command in $commands; do
        section "## $command" | grep .
        for option in $(options_of "$command"); do
            case $option in -h | --help) continue ;; esac
            echo "$command $option"
            section "## $command" | grep -F -- "*$option*"
            count=$((count + 1))
        done
    done
    [ "$count" -ge 14 ]
}

@test "the page knows no option that is gone" {
    all=$(options_of; for command in $("$BGPDT" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'); do
        options_of "$command"
    done)
    for option in $(grep -o -- '\*--[a-z]*\*' "$page" | tr -d '*' | sort -u); do
        echo "$option"
        [ "$option" = -- ] || grep -q -x -F -- "$option" <<< "$all"
    done
}

@test "the page names every exit status of the help" {
    for status in 0 1 2 3 4; do
        section '# EXIT STATUS' | grep -F "*$status*"
    done
    "$BGPDT" --help | grep '0 fine, 1 .*, 2 .*, 3 .*, 4 '
}

@test "scdoc and mandoc accept the page" {
    command -v scdoc > /dev/null || skip 'no scdoc'
    scdoc < "$page" > "$BATS_TEST_TMPDIR/bgpdt.1"
    command -v mandoc > /dev/null || skip 'no mandoc'
    run mandoc -Tlint -W error "$BATS_TEST_TMPDIR/bgpdt.1"
    [ "$status" -eq 0 ]
}

@test "the examples of the page run" {
    cd "$BATS_TEST_TMPDIR"
    printf '100:1\nno-export\n' > communities.txt
    PATH="$(dirname "$BGPDT"):$PATH"
    count=0
    while read -r example; do
        echo "$example"
        sh -c "$example"
        count=$((count + 1))
    done < <(section '# EXAMPLES' | sed -n '/^```/,/^```/p' | grep -v '^```')
    [ "$count" -ge 5 ]
    [ "$(wc -l < communities.jsonl)" -eq 2 ]
}
