# Wine for the Windows tests, in a prefix of its own in the cache folder; sourced, never run.
# shellcheck shell=bash

# for_wine COMMAND... runs a command with what a Windows program is to see: no display, the ANSI code page
# APPRUNTIME_CODE_PAGE (932 unless set otherwise), and our QT_ variables, which Wine hides unless they are called
# WINEQT_. It goes through env: the shell would try the locale on itself.
for_wine() {
    local cache locale name setting=()
    cache=$(cache_folder)
    case ${APPRUNTIME_CODE_PAGE:-932} in
    932) locale=ja_JP ;;
    1252) locale=en_US ;;
    *)
        echo "APPRUNTIME_CODE_PAGE is 932 or 1252" >&2
        return 2
        ;;
    esac
    for name in DISPLAY WAYLAND_DISPLAY LANG LANGUAGE "${!LC_@}"; do
        setting+=(-u "$name")
    done
    for name in "${!QT_@}"; do
        setting+=("WINE$name=${!name}")
    done
    setting+=(
        "WINEPREFIX=$cache/wine" WINEARCH=win64 WINEDEBUG=-all
        'WINEDLLOVERRIDES=mscoree,mshtml=;winemenubuilder.exe=d'
        # A locale that is not generated gives the code page of its language too, but garbles arguments.
        "LOCPATH=$cache/locales" "LC_ALL=$locale.UTF-8"
        # Without it Qt Test prints to a debugger when its output is no console.
        WINEQT_FORCE_STDERR_LOGGING=1
    )
    env "${setting[@]}" "$@"
}

# wine_prepare installs Wine and makes the prefix and the locales, once.
wine_prepare() {
    need wine:wine :wine64 localedef:libc-bin :locales
    local cache locale
    cache=$(cache_folder)
    mkdir -p "$cache/locales"
    (
        flock 9
        for locale in ja_JP en_US; do
            [[ -d $cache/locales/$locale.UTF-8 ]] ||
                localedef -i "$locale" -f UTF-8 "$cache/locales/$locale.UTF-8"
        done
        [[ ! -f $cache/wine/ready ]] || exit 0
        echo "Making a Wine prefix"
        rm -rf "$cache/wine"
        for_wine wineboot --init
        # With no display to draw on, the driver of one would be waited for.
        for_wine wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
        for_wine wine reg add 'HKCU\Software\Wine' /v Version /d win10 /f
        for_wine wineserver -k
        for_wine wineserver -w
        touch "$cache/wine/ready"
    ) 9>"$cache/wine.lock" </dev/null >&2
}

# wine_start starts the server and the services, which stay until wine_stop.
wine_start() {
    for_wine wineserver -p
    for_wine wine cmd /c exit
} </dev/null >&2

# wine_stop ends the server of our prefix, and no other.
wine_stop() { for_wine wineserver -k || true; }
