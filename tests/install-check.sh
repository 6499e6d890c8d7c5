#!/usr/bin/env bash
# Installs the build into a scratch prefix and checks that the desktop finds what it needs there:
# the programs, the help page, a valid .desktop entry and AppStream metainfo, and the icon.
#
#   install-check.sh BUILD_DIR
set -euo pipefail

build=$1
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix" >/dev/null
for file in bin/vantrel bin/vantrel-calc \
    "share/vantrel/Glessik Vantrel Help/Vantrel Help.html" \
    share/applications/com.glessik.Vantrel.desktop \
    share/metainfo/com.glessik.Vantrel.metainfo.xml \
    share/icons/hicolor/scalable/apps/com.glessik.Vantrel.svg; do
    [ -e "$prefix/$file" ] || { echo "not installed: $file" >&2; exit 1; }
done
grep -q 'id="expressions"' "$prefix/share/vantrel/Glessik Vantrel Help/Vantrel Help.html"
desktop-file-validate "$prefix/share/applications/com.glessik.Vantrel.desktop"
appstreamcli validate --no-net "$prefix/share/metainfo/com.glessik.Vantrel.metainfo.xml"
"$prefix/bin/vantrel-calc" -r 25 -- '01:00:10.12|25+00:00:05.00' | grep -q '^01:00:15.12'
echo "installed into $prefix and validated"
