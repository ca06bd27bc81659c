#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need,
# only those that are missing.
set -euo pipefail

# Liberation Sans stands in for Arial, the map's font; DejaVu for the rest.
# dpkg-dev's dpkg-shlibdeps gives the Debian package its dependencies.
# The accessibility test drives the program over AT-SPI on a D-Bus session.
# giflib (libgif-dev) and libwebp (libwebp-dev, found with pkgconf) write the
# animations of veltro-cli history; libpng (libpng-dev) the map's PNG.
# The tests run the program under German and Turkish locales (a decimal
# comma, a dotless i), which the locales package generates. The web map's
# tests run it in headless Chromium, driven by Selenium.
packages=(cmake g++ make pkgconf qt6-base-dev libgl-dev libpng-dev libgif-dev libwebp-dev libbenchmark-dev fonts-liberation
          fonts-dejavu-core xvfb time dpkg-dev at-spi2-core python3-pyatspi dbus-daemon locales chromium chromium-driver
          python3-selenium)
locales=(de_DE tr_TR)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
missing_locales=()
for l in "${locales[@]}"; do
  locale -a 2>/dev/null | grep -qx "$l.utf8" || missing_locales+=("$l")
done
[ ${#missing[@]} -eq 0 ] && [ ${#missing_locales[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
for l in "${missing_locales[@]}"; do
  echo "Generating the locale $l.UTF-8"
  $sudo localedef -i "$l" -c -f UTF-8 "$l.UTF-8"
done
