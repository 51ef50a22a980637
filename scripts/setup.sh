#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, only when one is missing,
# so that a second run costs nothing.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-charts-dev libqt6opengl6-dev libgl-dev
    libsqlite3-dev sqlite3
    libgtest-dev libgmock-dev googletest libbenchmark-dev
    clang libclang-rt-14-dev
    dbus dbus-x11 libglib2.0-bin xvfb xauth xdotool fonts-dejavu-core poppler-utils locales tzdata
    dpkg-dev x11-apps
    libcurl4-openssl-dev python3-aiosmtpd
    qtkeychain-qt6-dev libsecret-1-0 gnome-keyring libsecret-tools
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if ((${#missing[@]})); then
    echo "Installing: ${missing[*]}"
    sudo_cmd=()
    if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -qq
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The tests and `make run` use English (New Zealand); generate it once so the shell does not complain.
if ! locale -a 2>/dev/null | grep -qi '^en_NZ\.utf-\?8$'; then
    sudo_cmd=()
    if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
    if [ -f /etc/locale.gen ]; then
        "${sudo_cmd[@]}" sed -i 's/^# *\(en_NZ.UTF-8 UTF-8\)/\1/' /etc/locale.gen
        grep -q '^en_NZ.UTF-8 UTF-8' /etc/locale.gen || echo 'en_NZ.UTF-8 UTF-8' | "${sudo_cmd[@]}" tee -a /etc/locale.gen >/dev/null
        "${sudo_cmd[@]}" locale-gen >/dev/null 2>&1 || true
    fi
fi
