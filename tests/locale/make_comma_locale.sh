#!/bin/sh
# Builds the German locale (decimal comma) into the folder given, for the suites that run under it
# with LOCPATH pointing there. Needs localedef and the locale sources of Debian's "locales".
set -e
folder="$1"
[ -f "$folder/de_DE.UTF-8/LC_NUMERIC" ] && exit 0
if ! command -v localedef >/dev/null 2>&1 || [ ! -f /usr/share/i18n/locales/de_DE ]; then
    echo "localedef or the de_DE locale source is missing: install the package locales" >&2
    exit 1
fi
mkdir -p "$folder"
# localedef exits 1 on mere warnings; the files it leaves are what counts.
localedef -i de_DE -f UTF-8 "$folder/de_DE.UTF-8" || true
[ -f "$folder/de_DE.UTF-8/LC_NUMERIC" ]
