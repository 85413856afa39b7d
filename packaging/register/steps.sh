# What register-provider does alike for both servers: steps that can be undone, what it remembers between
# calls, the platform library, the lists of classes. Sourced by register-provider, never run.
# shellcheck shell=bash

# Set by register-provider.
: "${data:?}" "${provider_dir:?}" "${namespace:?}" "${registered_namespace:?}" "${server:?}"

say() { printf '%s\n' "$*"; }

fail() {
    printf 'register-provider: %s\n' "$@" >&2
    exit 1
}

# need COMMAND...
need() {
    local command
    for command in "$@"; do
        command -v "$command" >/dev/null ||
            fail "$command is missing. Is the CIM server $server installed, and its commands in PATH?"
    done
}

# --- Undoing: on_failure COMMAND... is run, last first, when register-provider fails.

undo=()
work=$(mktemp -d)

on_failure() { undo+=("$(printf '%q ' "$@")"); }

finish() {
    local status=$?
    trap - EXIT
    if [ "$status" -ne 0 ] && [ ${#undo[@]} -gt 0 ]; then
        echo "register-provider: undoing what was begun" >&2
        local i
        for ((i = ${#undo[@]} - 1; i >= 0; --i)); do
            (eval "${undo[i]}") >/dev/null || echo "register-provider: could not undo: ${undo[i]}" >&2
        done
    fi
    rm -rf "$work"
    exit "$status"
}
trap finish EXIT
trap 'exit 1' INT TERM HUP

# --- What is remembered of a registration, so that --remove takes back no more than was done. One file a
# fact.

memory=${server_home:-}/var/lib/kesto-fcip-provider/$server

remember() { # FACT TEXT
    mkdir -p "$memory"
    printf '%s\n' "$2" >"$memory/$1"
}

recall() { [ ! -f "$memory/$1" ] || cat "$memory/$1"; } # FACT

forget() {
    rm -rf "$memory"
    [ ! -d "${memory%/*}" ] ||
        (cd "${server_home:-/}" && rmdir -p --ignore-fail-on-non-empty var/lib/kesto-fcip-provider)
}

# --- The switch's platform library, which the server's process has to find.

LOADER_FILE=/etc/ld.so.conf.d/kesto-platform.conf

loader_finds_platform() { [[ $(/sbin/ldconfig -p) == *libkestoplatform.so.1\ * ]]; }

remove_loader_file() {
    rm -f "$LOADER_FILE"
    /sbin/ldconfig
}

restore_loader_file() {
    cp "$work/loader-file" "$LOADER_FILE"
    /sbin/ldconfig
}

# The processes of a program: of this very file, for there may be others of its name.
processes_of() { # COMMAND
    local pid program
    program=$(command -v "$1")
    for pid in $(pidof "$1" || true); do
        [ ! "/proc/$pid/exe" -ef "$program" ] || echo "$pid"
    done
}

# platform_library COMMAND: COMMAND is the server's program.
platform_library() {
    if [ -n "${platform_dir:-}" ]; then
        [ -e "$platform_dir/libkestoplatform.so.1" ] ||
            fail "there is no libkestoplatform.so.1 in $platform_dir"
        if [ -e "$LOADER_FILE" ]; then
            cp "$LOADER_FILE" "$work/loader-file"
            on_failure restore_loader_file
        else
            on_failure remove_loader_file
        fi
        printf '# Written by register-provider.\n%s\n' "$platform_dir" >"$LOADER_FILE"
        /sbin/ldconfig
        say "$LOADER_FILE names $platform_dir."
    fi
    # Whichever call wrote it, the server relies on it from now on.
    [ ! -e "$LOADER_FILE" ] || remember_platform=yes
    loader_finds_platform && return
    local pid folder folders
    for pid in $(processes_of "$1"); do
        folders=$(tr '\0' '\n' <"/proc/$pid/environ" | sed -n 's/^LD_LIBRARY_PATH=//p')
        for folder in ${folders//:/ }; do
            [ ! -e "$folder/libkestoplatform.so.1" ] || return 0
        done
    done
    fail "the loader does not find the switch's platform library, libkestoplatform.so.1." \
        "Name its folder with --platform-dir DIR, or start $1 with the folder in LD_LIBRARY_PATH."
}

# The loader's file stays as long as the other server needs it.
forget_platform() {
    [ -n "$(recall loader-file)" ] || return 0
    local needed
    for needed in "${memory%/*}"/*/loader-file; do
        [ "$needed" = "$memory/loader-file" ] || [ ! -e "$needed" ] || return 0
    done
    remove_loader_file
}

# --- Classes and registrations

# Names of the classes that a MOF file defines, in its order.
classes_of() { sed -nE 's/^class +([A-Za-z0-9_]+).*/\1/p' "$1"; }

# The file, with the namespace asked for in place of the one that it was made for.
in_namespace() { # FILE
    local copy
    copy=$work/$(basename "$1")
    sed "s|$registered_namespace|$namespace|" "$1" >"$copy"
    printf '%s\n' "$copy"
}

# WHICH is one line of the list.
has_line() { grep -qixF -- "$1" <<<"$2"; } # WHICH LIST

CHECKED_CLASS=KESTO_FCIPProtocolEndPoint
