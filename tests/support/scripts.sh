#!/usr/bin/env bash
# Asks every script for help, and gives it an argument that it cannot take: tests/support/scripts.sh
set -uo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/tree"
cp -r "$(dirname "${BASH_SOURCE[0]}")"/../../{scripts,CMakePresets.json} "$work/tree"
cd "$work/tree" || exit
errors=$work/errors
failed=0

# fault TEXT
fault() {
    echo "$script: $1"
    failed=1
}

for script in scripts/*; do
    # All that scripts/launch is given is for the program that it starts.
    [[ -f $script && $script != scripts/launch ]] || continue
    help=$(timeout 60 "$script" --help 2>"$errors") || fault "--help ends with $?"
    [[ $help == *"$script"* ]] || fault "--help does not show how to call it"
    [[ $help =~ (second|minute|hour) ]] || fault "--help does not say how long it takes"
    [[ ! -s $errors ]] || fault "--help writes to standard error: $(<"$errors")"

    output=$(timeout 60 "$script" --no-such-option 2>"$errors")
    code=$?
    ((code == 2)) || fault "a wrong argument ends with $code"
    [[ -z $output && $(wc -l <"$errors") == 1 ]] || fault "a wrong argument gives no single line: $output$(<"$errors")"

    [[ $(echo *) == "CMakePresets.json scripts" ]] || fault "it has changed something"
done
exit "$failed"
