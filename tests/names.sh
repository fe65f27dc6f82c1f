#!/usr/bin/env bash
# names.sh BUILD-FOLDER: every test has a name that says what it tests and is the same in every run:
# a parameterised one names its parameter, no name holds an address or bytes.

# What ctest found in the test programs when it started; not in those that an older state left.
names=$(sed -n 's/^include("\(.*\)_include.cmake")/\1_tests.cmake/p' "$1/tests/CTestTestfile.cmake" |
    while read -r list; do cat "$list"; done | sed -n 's/^add_test(\[=\[\(.*\)\]=\].*/\1/p')
[ -n "$names" ] || { echo "no tests are listed in $1/tests" >&2; exit 1; }
# After "Suite.Test/" comes the parameter: a word, not a number or a picture of what it holds.
bad=$(grep -E '0x|GetParam|-byte object|[^ -~]|\.[A-Za-z0-9_]+/([^A-Za-z]|.*[^A-Za-z0-9_])' <<<"$names")
if [ -n "$bad" ]; then
    printf 'tests that do not name their parameter:\n%s\n' "$bad" >&2
    exit 1
fi
