#!/usr/bin/env bash
# Installs the build into a scratch prefix and builds its Debian package, and checks that both
# hold what the desktop and the shell need: the programs, the help page, a valid .desktop entry
# and AppStream metainfo, the icon, the manual pages and the shell completions.
#
#   install-check.sh BUILD_DIR
set -euo pipefail

build=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

files=(bin/vantrel bin/vantrel-calc
    "share/vantrel/Glessik Vantrel Help/Vantrel Help.html"
    share/applications/com.glessik.Vantrel.desktop
    share/metainfo/com.glessik.Vantrel.metainfo.xml
    share/icons/hicolor/scalable/apps/com.glessik.Vantrel.svg
    share/man/man1/vantrel.1.gz share/man/man1/vantrel-calc.1.gz
    share/bash-completion/completions/vantrel-calc
    share/zsh/vendor-completions/_vantrel-calc
    share/fish/vendor_completions.d/vantrel-calc.fish
    share/doc/vantrel/copyright)

check_tree() {
    local root=$1 file
    for file in "${files[@]}"; do
        [ -e "$root/$file" ] || { echo "missing from $root: $file" >&2; exit 1; }
    done
    grep -q 'id="expressions"' "$root/share/vantrel/Glessik Vantrel Help/Vantrel Help.html"
    desktop-file-validate "$root/share/applications/com.glessik.Vantrel.desktop"
    appstreamcli validate --no-net "$root/share/metainfo/com.glessik.Vantrel.metainfo.xml"
    zgrep -q 'EXPRESSION LANGUAGE' "$root/share/man/man1/vantrel-calc.1.gz"
}

cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
check_tree "$scratch/prefix"
"$scratch/prefix/bin/vantrel-calc" -r 25 -- '01:00:10.12|25+00:00:05.00' | grep -q '^01:00:15.12'

(cd "$build" && cpack -G DEB -B "$scratch/package" >/dev/null)
deb=$(ls "$scratch"/package/vantrel_*_*.deb)
dpkg-deb -x "$deb" "$scratch/unpacked"
check_tree "$scratch/unpacked/usr"
dpkg-deb -f "$deb" Depends | grep -q 'libqt6widgets6'
# Qt's SVG image plug-in, loaded at run time, draws the help page's drawings.
dpkg-deb -f "$deb" Depends | grep -q 'libqt6svg6'
echo "installed, packaged as $(basename "$deb") and validated"
