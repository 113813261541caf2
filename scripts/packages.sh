#!/usr/bin/env bash
# Installs the Debian packages the station needs, and any named as arguments, when missing.
# Usage: scripts/packages.sh [extra-package...]
set -euo pipefail

packages=(build-essential cmake ninja-build pkg-config ccache zlib1g-dev
    qt6-base-dev qt6-translations-l10n libqt6sql6-sqlite libqt6sql6-psql libxlsxwriter-dev
    postgresql postgresql-client xvfb xauth fonts-dejavu-core poppler-utils python3-openpyxl sqlite3 libsqlite3-dev "$@")

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo_cmd=()
    [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
