#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need, when
# any of them is missing. Uses sudo when not run as root.
#   --bench  also what the benchmarks use: an X server and a window manager
#            for the first frame on a display (a few MB)
set -euo pipefail

packages=(
    cmake g++ make ccache python3
    qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev libfontconfig-dev
    fonts-liberation fonts-liberation2
)
if [ "${1:-}" = "--bench" ]; then
    packages+=(xvfb matchbox-window-manager)
fi

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
