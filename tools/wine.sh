#!/bin/sh
# Runs a Windows program under Wine: in the session that it was started in (tools/wine_session.sh) or in one of its own.
#
#     wine.sh PROGRAM [ARGUMENT...]
set -eu
if [ -z "${KORD_WINE+set}" ]; then
    exec "$(dirname "$0")/wine_session.sh" "$0" "$@"
elif [ -n "$KORD_WINE" ]; then
    exec chroot "$KORD_WINE" env --chdir="$PWD" HOME=/root wine "$@"
fi
exec wine "$@"
