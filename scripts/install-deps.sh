#!/usr/bin/env bash
# Installs the Debian packages that building, testing and running Tavilo need,
# but only those that are missing, so a second run costs a few dpkg queries.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-svg-dev qt6-base-dev-tools qt6-translations-l10n
  libgtest-dev libgmock-dev libbenchmark-dev time
  clang libclang-rt-dev clang-format
  locales xvfb xauth fonts-dejavu-core poppler-utils
  desktop-file-utils appstream shared-mime-info libglib2.0-bin xdg-utils man-db
  xfoil xfonts-base parallel
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get update -qq
  as_root apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The number tests run once more under a German locale, where the decimal
# separator is a comma; generate it if the machine lacks it.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8 || echo "warning: could not generate de_DE.UTF-8" >&2
fi
