#!/bin/sh
# Installs from Debian's packages what is missing for a purpose, and says what and why. Does nothing when all is there.
set -eu

usage() {
    cat <<'EOF'
usage: tools/install-packages.sh run|test|lint [--list]

  run     what building and running the host needs
  test    the same, and what the tests need
  lint    the same, and what the format and lint checks need
  --list  print the packages with their reasons and install nothing

Installs with root's rights, or through sudo.
EOF
}

# One package a line, with what it is for.
run_packages() {
    cat <<'EOF'
g++                       compiler
cmake                     build
ninja-build               build
pkg-config                build
libefl-all-dev            the toolkit
libelementary-data        the toolkit's own theme
libedje-bin               theme compiler
libevas1-engines-x        windows under X11
libevas1-engines-wayland  windows under Wayland
libsqlite3-dev            store of the registered devices
libglib2.0-dev            main loop, and D-Bus for BlueZ's devices
libcli11-dev              options of the programs
nlohmann-json3-dev        device lists as JSON
gettext                   message catalogues
librsvg2-bin              pictures
webp                      pictures
fontconfig                fonts
fonts-noto-core           fonts: Latin, Arabic, Hebrew, Devanagari and more
fonts-noto-ui-core        fonts: Arabic, Devanagari and Thai with lines as high as Latin ones
fonts-noto-cjk            fonts: Chinese, Japanese, Korean
fonts-symbola             fonts: emoji in one colour, in the names of devices
EOF
}

test_packages() {
    run_packages
    cat <<'EOF'
libgtest-dev              tests
libgmock-dev              tests
python3                   catalogue checks
python3-polib             catalogue checks: reads catalogues
binutils                  check of the module's symbols
xvfb                      tests of the window
dbus                      tests with a mock of bluetoothd, on a bus of their own
python3-dbusmock          the mock
libx11-dev                tests of the window: what is on the screen
libxtst-dev               tests of the window: keys of the keyboard
EOF
}

lint_packages() {
    test_packages
    cat <<'EOF'
clang                     second compiler
clang-format              format check
clang-tidy                lint
EOF
}

purpose=${1-}
case "$purpose" in
    run | test | lint) ;;
    -h | --help) usage; exit 0 ;;
    *) echo "install-packages: '$purpose' is no purpose; use run, test or lint" >&2; usage >&2; exit 2 ;;
esac
case "${2-}" in
    '') ;;
    --list) "${purpose}_packages"; exit 0 ;;
    *) echo "install-packages: '$2' is no option" >&2; usage >&2; exit 2 ;;
esac

if ! command -v dpkg-query >/dev/null; then
    echo "install-packages: this is no Debian system; install the counterparts of these packages by hand:" >&2
    "${purpose}_packages" >&2
    exit 1
fi

missing=$("${purpose}_packages" | while read -r package reason; do
    dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || echo "$package  ($reason)"
done)
[ -n "$missing" ] || exit 0

echo "Installing what 'make $purpose' needs and this machine does not have:"
echo "$missing" | sed 's/^/  /'
as_root=
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "install-packages: run this as root, or install sudo" >&2
        exit 1
    }
    as_root=sudo
fi
log=$(mktemp)
# shellcheck disable=SC2046 # a word for each package
if $as_root apt-get update >"$log" 2>&1 &&
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        $(echo "$missing" | cut -d' ' -f1) >>"$log" 2>&1; then
    rm -f "$log"
else
    cat "$log" >&2
    echo "install-packages: the packages above could not be installed; the lines before tell why" >&2
    exit 1
fi
