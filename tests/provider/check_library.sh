#!/bin/sh
# What the finished provider library asks of others, and what it shows them.
#
#   check_library.sh links LIBRARY          needs the platform's library and the C and C++ run-time only, and
#                                           binds its own names itself
#   check_library.sh throws LIBRARY         takes no memory with new and raises no exception: nothing can
#                                           throw while the provider lock is held
#   check_library.sh exports LIBRARY FILE   exports exactly the names that FILE lists, one a line
set -u
check=$1
library=$2

case $check in
links)
    # The sanitizers' libraries belong to the run-time of a sanitized build.
    allowed='libkestoplatform\.so\.1|libstdc\+\+\.so\.6|libgcc_s\.so\.1|libc\.so\.6|libm\.so\.6'
    allowed="$allowed|ld-linux[-a-z0-9_]*\.so\.2|lib[atu]b?san\.so\.[0-9]+"
    needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
    others=$(printf '%s\n' "$needed" | grep -vE "^($allowed)\$")
    [ -z "$others" ] || { echo "needs also: $others"; exit 1; }
    printf '%s\n' "$needed" | grep -qx 'libkestoplatform\.so\.1' ||
        { echo "does not need libkestoplatform.so.1"; exit 1; }
    readelf -d "$library" | grep -qE '\(SYMBOLIC\)|FLAGS.*SYMBOLIC' ||
        { echo "is not linked -Bsymbolic"; exit 1; }
    ;;
throws)
    # operator new in its forms (_Zn), and what raises an exception.
    raising='^(_Zn|__cxa_(allocate|throw|rethrow)|_ZSt[0-9]+__throw)'
    found=$(nm -D --undefined-only "$library" | awk '{ print $NF }' | grep -E "$raising")
    [ -z "$found" ] || { echo "can throw: $found"; exit 1; }
    ;;
exports)
    expected=$(sort "$3")
    exported=$(nm -D --defined-only "$library" | awk '{ print $NF }' | sort)
    [ "$expected" = "$exported" ] && exit 0
    folder=$(mktemp -d)
    printf '%s\n' "$expected" > "$folder/expected"
    printf '%s\n' "$exported" > "$folder/exported"
    echo "< missing, > not meant to be exported:"
    diff "$folder/expected" "$folder/exported" | grep '^[<>]'
    rm -r "$folder"
    exit 1
    ;;
*)
    echo "usage: $0 links LIBRARY | throws LIBRARY | exports LIBRARY FILE" >&2
    exit 2
    ;;
esac
