# What the tests of the installation share. BGP_SOURCES is the source folder.

# The README's program, and its link lines, one a line.
readme_program() { sed -n '/^```c$/,/^```$/{/^```/d;p}' "$BGP_SOURCES/README.md"; }
readme_links() { sed -n '/^```sh$/,/^```$/s/^cc .* -o [a-z]*$/&/p' "$BGP_SOURCES/README.md"; }
# What it says that the program prints.
readme_output() { sed -n '/^\$ \.\/asnum$/{n;p}' "$BGP_SOURCES/README.md"; }

# What the minimal host prints, given 65000:1 0.65000:1 65000:4294967296.
host_output() { printf '%s\n' "$(grep -c '^    &bgp::k' "$BGP_SOURCES"/src/init/*.cpp) rows" 'STRING<3-21>' 65000:1 0.65000:1 'refused: 0x80170d'; }
