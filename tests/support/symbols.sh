#!/usr/bin/env bash
# Names global symbols that a program's own could meet: symbols.sh static|shared LIBRARY [NM]
#
# In the static library everything of ours belongs to a public type or to appruntime_internal. A function with a plain
# name would be replaced by a program's function of that name, without a warning. The shared library exports the
# members that the installed headers declare, and one variable for our launcher.
set -euo pipefail
kind=$1 library=$2 nm=${3:-nm}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
public='AppRuntime|CsvRecord|InputMode|ScanCursor|TextReadChannel|TextWriteChannel|VersionInfo'

# scopes prints the outermost name of each mangled one: 10AppRuntime4trimERK7QString is of AppRuntime. Names of std have
# none, and operators outside any class are those of types that are looked at by themselves.
scopes() {
    sed -nE 's/^_Z(T[VISTchv][^0-9NZ]*|G[VR])?[ZNrVKO]*([0-9]+)([A-Za-z_].*)$/\2 \3/p' |
        while read -r length rest; do echo "${rest:0:length}"; done | sort -u
}

if [[ $kind == static ]]; then
    names=$("$nm" --defined-only --extern-only "$library" | sed -nE 's/^[0-9a-f]+ [A-Za-z] //p' | sort -u)
    # What begins with a q, or compares, is inline in Qt's headers; compilers and sanitizers add names of their own.
    foreign=$(scopes <<<"$names" | grep -vxE "($public|appruntime_internal|[qQ].*|compare(s[A-Z]|ThreeWay).*|__.*)" || true)
    foreign+=$'\n'$(grep -vE '^(q|_Z|DW\.ref\.|_?_?(asan|ubsan|odr|gcov|llvm)|__|\.)' <<<"$names" || true)
else
    names=$("$nm" --dynamic --defined-only "$library" | sed -nE 's/^[0-9a-f]+ [A-Za-z] //p')
    foreign=$(grep -vE '^_Z' <<<"$names" || true)
    # A debug build exports what it keeps of the inline code of Qt and of the standard library.
    members=$(c++filt <<<"$names" | sed -E 's/\(.*//' |
        grep -vE '^((std|Q[A-Za-z]*)::|appruntime_internal::waitedForProcess$)' | sort -u)
    headers=$(cat runtime/core/appruntime.h runtime/*/{csvrecord,inputmode,scancursor,textchannels,versioninfo}.h)
    while read -r member; do
        name=${member##*::}
        [[ $member =~ ^($public):: && $headers =~ (^|[^A-Za-z_])"$name"\( ]] || foreign+=$'\n'$member
    done <<<"$members"
fi
[[ $names == *AppRuntime* ]] || foreign+=" nothing of ours at all"

[[ -n ${foreign//$'\n'/} ]] || exit 0
echo "$library has global names that belong to no public type: ${foreign//$'\n'/ }"
exit 1
