#!/usr/bin/env bash
# The commands of an OpenPegasus, by whose names this file is called, with a repository of text files: what
# register-provider asks of them, and no more. The repository's file `refused` holds a pattern of commands
# that fail.
set -eu
command=$(basename "$0")
repository=$(dirname "$0")/../repository

is_line() { grep -qxF -- "$1" "$2"; } # LINE FILE
drop_line() {                         # LINE FILE
    is_line "$1" "$2" || exit 4
    grep -vxF -- "$1" "$2" >"$2.new" || true
    mv "$2.new" "$2"
}

if [ -f "$repository/refused" ] && [[ "$command $*" == $(cat "$repository/refused") ]]; then
    echo "refused" >&2
    exit 1
fi
case "$command $1" in
    "cimconfig -l") ;;
    "cimconfig -g") echo "Value: $(cat "$repository/providerDir$3")" ;;
    "cimconfig -s") echo "${2#providerDir=}" >"$repository/providerDir$3" ;;
    "cimprovider -l") cat "$repository/modules" ;;
    "cimprovider -d") ;;
    "cimprovider -r") drop_line "$3" "$repository/modules" ;;
    "cimmof -n") sed -nE 's/.*ProviderModuleName = "(.*)";/\1/p' "$3" | sort -u >>"$repository/modules" ;;
    "cimmof -w") sed -nE 's/^class ([A-Za-z0-9_]+).*/\1/p' "$5" | sort -u "$repository/classes" - \
        -o "$repository/classes" ;;
    "cimcli nc") cat "$repository/classes" ;;
    "cimcli dc") drop_line "$2" "$repository/classes" ;;
    "cimcli ni")
        is_line "$2" "$repository/classes" && is_line FCIPProviderModule "$repository/modules" || exit 1
        echo "$2.Name=\"1\""
        ;;
    *)
        echo "unknown: $command $*" >&2
        exit 2
        ;;
esac
