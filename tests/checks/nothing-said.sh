#!/bin/sh
# Passes when the command succeeds and prints nothing.
said=$("$@") || exit 1
[ -z "$said" ] || { printf '%s\n' "$said"; exit 1; }
