#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need,
# only those that are missing.
set -euo pipefail

# Liberation Sans stands in for Arial, the map's font; DejaVu for the rest.
# dpkg-dev's dpkg-shlibdeps gives the Debian package its dependencies.
# The accessibility test drives the program over AT-SPI on a D-Bus session.
# giflib (libgif-dev) and libwebp (libwebp-dev, found with pkgconf) write the
# animations of veltro-cli history; libpng (libpng-dev) the map's PNG.
packages=(cmake g++ make pkgconf qt6-base-dev libgl-dev libpng-dev libgif-dev libwebp-dev libbenchmark-dev fonts-liberation fonts-dejavu-core xvfb time
          dpkg-dev at-spi2-core python3-pyatspi dbus-daemon)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
