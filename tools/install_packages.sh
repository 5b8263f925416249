#!/usr/bin/env bash
# Installs what is missing among the packages of packages.txt; does nothing where all are there.
set -eu
cd "$(dirname "$0")/.."

mapfile -t wanted < <(grep -v '^#' packages.txt)
missing=()
for package in "${wanted[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok' || missing+=("$package")
done
[ "${#missing[@]}" -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
