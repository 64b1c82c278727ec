#!/usr/bin/env bash
# Installs the Debian packages of the lists that are named as arguments (cmake/packages/*.txt), as far as they are not
# there yet.
set -euo pipefail
missing=()
lists=$(dirname "$0")/packages
for package in $(for list in "$@"; do cat "$lists/$list.txt"; done); do
    if ! dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
