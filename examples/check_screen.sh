#!/bin/sh
# Types the commands of a screen again and compares what comes:
#
#     check_screen.sh EXAMPLE README DATA PROGRAMS
#
# The screen is the console block below the heading EXAMPLE. A command stands behind "$ "; it runs in a copy of DATA.
set -eu
example=$1 readme=$2 data=$3 programs=$4

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
awk -v heading="## $example" '
    /^## / { inside = ($0 == heading) }
    /^```/ { block = inside && $0 == "```console"; next }
    block
' "$readme" >"$folder/expected"
if ! [ -s "$folder/expected" ]; then
    echo "$readme has no screen of $example" >&2
    exit 1
fi

cp -R "$data" "$folder/data"
cd "$folder/data"
# The page is in UTF-8, and its programs are called as if they were installed.
LC_ALL=C.UTF-8 PATH=$programs:$PATH
export LC_ALL PATH
grep '^\$ ' ../expected | while IFS= read -r command; do
    printf '%s\n' "$command"
    sh -c "${command#??}" 2>&1 </dev/null || true
done >../shown
diff -u ../expected ../shown
