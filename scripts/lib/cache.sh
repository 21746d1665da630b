# The folder for what takes long to make and is kept outside the checkout; sourced, never run.
# shellcheck shell=bash

# cache_folder prints it, with no symbolic link in its path.
cache_folder() {
    local folder=${APPRUNTIME_CACHE:-${XDG_CACHE_HOME:-${HOME:?}/.cache}/appruntime}
    mkdir -p "$folder"
    readlink -f "$folder"
}
