#!/usr/bin/env bash
# Asks every script for help, and gives it an argument that it cannot take: tests/support/scripts.sh
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit
errors=$(mktemp)
trap 'rm -f "$errors"' EXIT
failed=0

# fault TEXT
fault() {
    echo "$script: $1"
    failed=1
}

# state is what a script that only talks leaves as it is.
state() { ls -la --time-style=full-iso . build dist 2>/dev/null; }

for script in scripts/*; do
    # All that scripts/launch is given is for the program that it starts.
    [[ -f $script && $script != scripts/launch ]] || continue
    before=$(state)

    help=$(timeout 60 "$script" --help 2>"$errors") || fault "--help ends with $?"
    [[ $help == *"$script"* ]] || fault "--help does not show how to call it"
    [[ $help =~ (second|minute|hour) ]] || fault "--help does not say how long it takes"
    [[ ! -s $errors ]] || fault "--help writes to standard error: $(<"$errors")"

    output=$(timeout 60 "$script" --no-such-option 2>"$errors")
    code=$?
    ((code == 2)) || fault "a wrong argument ends with $code"
    [[ -z $output && $(wc -l <"$errors") == 1 ]] || fault "a wrong argument gives no single line: $output$(<"$errors")"

    [[ $(state) == "$before" ]] || fault "it has changed something"
done
exit "$failed"
