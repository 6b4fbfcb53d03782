#!/usr/bin/env bash
# Runs a test of the Windows build under Wine: Qt's tests tell a Windows console nothing, so their
# words go through a file.
set -uo pipefail
words=$(mktemp)
trap 'rm -f "$words"' EXIT
wine "$@" -o "$(winepath -w "$words"),txt"
status=$?
cat "$words"
exit "$status"
