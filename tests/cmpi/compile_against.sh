#!/bin/sh
# Compiles every source of the provider, without linking, against one set of CMPI headers: the project's own
# folder or that of a CIM server's development package.
#
#   tests/cmpi/compile_against.sh FOLDER [COMPILER FLAGS, for example -m32 or -DCMPI_VERSION=100]
#
# CXX names the compiler. Exits 1 and names the sources that did not compile.
set -u
[ $# -ge 1 ] || { echo "usage: $0 FOLDER [FLAGS]" >&2; exit 2; }
headers=$1
shift
for header in cmpidt.h cmpift.h cmpimacs.h; do
    [ -f "$headers/$header" ] || { echo "$headers has no $header" >&2; exit 2; }
done

root=$(cd "$(dirname "$0")/../.." && pwd)
failed=0
compiled=0
for source in "$root"/platform/*.cpp "$root"/classes/*.cpp "$root"/assoc/*.cpp "$root"/provider/*.cpp; do
    [ -f "$source" ] || continue
    # -isystem: the warnings of other people's headers are not ours.
    if ${CXX:-c++} -std=c++20 -fsyntax-only -Wall -Wextra -Wconversion -Werror \
        -DCMPI_PLATFORM_LINUX_GENERIC_GNU -isystem "$headers" -I "$root" "$@" "$source"; then
        compiled=$((compiled + 1))
    else
        echo "does not compile against $headers: $source" >&2
        failed=1
    fi
done
[ $compiled -gt 0 ] || { echo "no sources found in $root" >&2; exit 2; }
[ $failed -eq 0 ] && echo "$compiled sources compile against $headers"
exit $failed
