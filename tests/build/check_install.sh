#!/bin/sh
# Usage: check_install.sh CMAKE BUILD_DIR HOST READELF
# Installs both components into empty folders. The installed host draws the same picture as the one of the build tree,
# with its own module and with the television's; the television's folders hold what a television needs and nothing else.
cmake=$1
build=$2
host=$3
readelf=$4
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
failed=0

fault() {
    echo "$1" >&2
    failed=1
}

install_log() {
    "$cmake" --install "$build" "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
}
install_log --component desktop --prefix "$work/desktop"
DESTDIR="$work/television" install_log --component television

# What is drawn, in a home of its own.
unset DISPLAY WAYLAND_DISPLAY LANGUAGE VESK_SHARE VESK_PRODUCT VESK_LOG VESK_LOG_LEVEL VESK_FAIL
mkdir -m 700 "$work/home"
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data"
export VESK_DEVICES="$work/devices.db" VESK_SETTINGS="$work/settings.ini"
draw() {
    picture=$1
    shift
    (cd "$work" && "$@" --no-display --no-animations --screenshot "$work/$picture") >"$work/log" 2>&1 && return
    cat "$work/log" >&2
    fault "$* does not draw the panel"
}
draw built.png "$host"
draw installed.png "$work/desktop/bin/vesk-host"
draw television.png "$work/desktop/bin/vesk-host" --module "$work/television/usr/ug/lib/libug-VeskUG-efl.so"
cmp "$work/built.png" "$work/installed.png" || fault "the installed host draws another picture"
cmp "$work/built.png" "$work/television.png" || fault "the television's module draws another picture"
"$work/desktop/bin/veskctl" devices list >"$work/list" || fault "the installed veskctl lists no devices"
[ "$(wc -l <"$work/list")" -gt 1 ] || fault "the installed veskctl lists no devices"

# It is the installed module that was drawn, and none of the build tree.
rm "$work/desktop/lib/libug-VeskUG-efl.so" || fault "the module is not where the host looks for it"
"$work/desktop/bin/vesk-host" --no-display --screenshot "$work/none.png" 2>/dev/null &&
    fault "the installed host runs a module of somewhere else"

module=$work/television/usr/ug/lib/libug-VeskUG-efl.so
"$readelf" -d "$module" | grep -q 'libvesk-platform' && fault "the television's module needs the desktop's platform"
"$readelf" -d "$module" | grep -qE 'RUNPATH|RPATH' && fault "the television's module looks for libraries on its own"
strange=$(cd "$work/television" && find . -type f | grep -vE \
    -e '^\./usr/ug/lib/libug-VeskUG-efl\.so$' \
    -e '^\./usr/ug/res/locale/[A-Za-z_@]+/LC_MESSAGES/ug-VeskUG-efl\.mo$' \
    -e '^\./usr/share/resources/image/icon/r_icon_convergence/r_icon_convergence_[a-z0-9_]+\.webp$' \
    -e '^\./usr/apps/com\.corvane\.tv\.theme-resource/shared/res/ug-VeskUG-efl/r_icon_service_s_[a-z0-9_]+_w\.webp$')
[ -z "$strange" ] || fault "the television gets what it does not need: $strange"

# same_files FOLDER FOLDER: each file of the first is in the second.
same_files() {
    [ -n "$(find "$1" -type f)" ] || fault "$1 is empty"
    diff -r "$1" "$2" >/dev/null || fault "$2 is not what was built"
}
share=$build/share/vesk
same_files "$share/locale" "$work/television/usr/ug/res/locale"
same_files "$share/pictures/r_icon_convergence" "$work/television/usr/share/resources/image/icon/r_icon_convergence"
same_files "$share/pictures/ug-VeskUG-efl" \
    "$work/television/usr/apps/com.corvane.tv.theme-resource/shared/res/ug-VeskUG-efl"
same_files "$share" "$work/desktop/share/vesk"
exit $failed
