#!/usr/bin/env bash
# Installs the Debian packages the build needs, and any further packages
# named as arguments (the benchmark and the fuzzers ask for theirs), skipping
# what is there.
set -euo pipefail

# qt6-base-dev builds the window, trident, beside the batch tool; the build
# scripts compile through ccache.
packages=(cmake g++ make ccache libgtest-dev libcli11-dev libbenchmark-dev qt6-base-dev "$@")

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
        missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
