# Shared by the scripts beside this folder; sourced, never run.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
script=scripts/${0##*/}

# --help prints the comment at the top of the script that sources this, before anything else is done. Only the
# arguments of scripts/launch are another program's.
if [[ $script != scripts/launch && " $* " == *" --help "* ]]; then
    sed -n '2,/^[^#]/ s/^# \{0,1\}//p' "$0"
    exit 0
fi

# wrong TEXT ends the script with exit code 2 and one line that says what it cannot take.
wrong() {
    echo "$script: $1; '$script --help' says what it takes" >&2
    exit 2
}

# no_arguments "$@" is for a script that takes none.
no_arguments() { (($# == 0)) || wrong "there is no argument '$1'"; }

# need COMMAND:PACKAGE... installs the packages whose command is missing; with no command before the colon it looks
# for the package itself. Asks the network for nothing when all is there.
need() {
    local missing=() entry command package
    for entry in "$@"; do
        command=${entry%%:*} package=${entry#*:}
        if [[ -n $command ]]; then
            command -v "$command" >/dev/null && continue
        elif [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]]; then
            continue
        fi
        missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local run=()
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "Please install these packages first: ${missing[*]}" >&2
            return 1
        fi
        run=(sudo)
    fi
    if ! command -v apt-get >/dev/null; then
        echo "Please install what Debian calls: ${missing[*]}" >&2
        return 1
    fi
    echo "Installing ${missing[*]}" >&2
    run+=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=600 -o Acquire::Retries=3)
    "${run[@]}" update </dev/null >&2
    "${run[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null >&2
}

need_build_tools() {
    local build_tools=(c++:g++ cmake:cmake ninja:ninja-build)
    # A Qt of the user's own is found by CMake.
    [[ -n ${CMAKE_PREFIX_PATH:-}${Qt6_DIR:-} ]] || build_tools+=(:qt6-base-dev)
    need "${build_tools[@]}"
}

# The version that the project declares to CMake.
project_version() { sed -nE 's/^ *VERSION ([0-9.]+)$/\1/p' "$root/CMakeLists.txt"; }

# build PRESET [TARGET...] brings the preset's build folder up to date, and is silent when it is. What it has to
# say goes to standard error.
build() {
    local preset=$1 folder=$root/build/$1
    shift
    mkdir -p "$folder"
    (
        flock 9 # two calls at once share the folder
        local cache=$folder/CMakeCache.txt configured=$folder/.configured
        if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
            rm -rf "$folder/CMakeFiles" "$cache" "$configured" # the checkout has been moved
        fi
        # Another static Qt than last time, made by scripts/build-qt, means to begin again.
        if [[ -f $configured && $(<"$configured") != "${APPRUNTIME_QT:-}" ]]; then
            rm -rf "$folder/CMakeFiles" "$cache" "$configured"
        fi
        if [[ ! $configured -nt $root/CMakePresets.json ]]; then
            (cd "$root" && cmake --preset "$preset") >&2
            echo "${APPRUNTIME_QT:-}" >"$configured"
        fi
        local targets=("${@:-all}")
        if [[ $(ninja -C "$folder" -n "${targets[@]}" 2>&1) != *"no work to do"* ]]; then
            cmake --build "$folder" --target "${targets[@]}" >&2
        fi
    ) 9>"$folder/.lock"
}
