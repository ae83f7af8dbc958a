#!/bin/sh
# Installs, from Debian's packages, whatever the build and the tests need and is not yet there.
set -e
packages="g++ make cmake pkg-config git qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libqt6test6 \
libgl-dev libgtest-dev libgmock-dev googletest libbenchmark-dev clang-format fonts-dejavu-core \
locales poppler-utils libsuitesparse-dev lcov libdxflib-dev desktop-file-utils appstream dpkg-dev"
missing=""
for package in $packages; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
        missing="$missing $package"
done
[ -z "$missing" ] && exit 0
if [ "$(id -u)" -ne 0 ]; then
    echo "Missing packages:$missing (run as root, or: sudo apt-get install$missing)" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
# shellcheck disable=SC2086
apt-get install -y -qq --no-install-recommends $missing
