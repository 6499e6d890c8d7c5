#!/usr/bin/env bash
# Installs the Debian 12 packages that building, running and testing Vantrel need, and only the
# ones that are missing, so a bare machine needs nothing but this repository.
set -euo pipefail

packages=(
    cmake ninja-build g++ pkg-config git
    libonig-dev nlohmann-json3-dev libcli11-dev libpugixml-dev help2man
    dpkg-dev
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-qpa-plugins libgl-dev fonts-dejavu-core
    libgtest-dev libbenchmark-dev
    locales
    xvfb xauth xdotool x11-apps x11-utils openbox desktop-file-utils appstream
)
packages+=("$@")

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing missing packages: ${missing[*]}" >&2
sudo=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Run as root or install sudo to install: ${missing[*]}" >&2; exit 1; }
    sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
