#!/bin/sh
# Every link of the installed documents leads to what is installed with them.
#
# Usage: installed_documents_test.sh CMAKE BUILD
set -eu
cmake=$1
build=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$cmake" --install "$build" --component documents --prefix "$folder" >/dev/null
"$(dirname "$0")/../tools/check-links" "$folder"
