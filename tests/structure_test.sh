#!/usr/bin/env bash
# The house's own rules, read from the sources: folders include one way only, no source turns the formatter
# off, and none is long.
#
# Usage: tests/structure_test.sh includes|formatter|length
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 2

# Each of the library's folders includes only itself and those before it.
LIBRARY=(common platform include classes assoc provider)
PRODUCT=("${LIBRARY[@]}" server emulator)
MOST_LINES=400

# The sources of the folders given, without those that do not exist.
sources_of() {
    local folder
    for folder in "$@"; do
        [ ! -d "$folder" ] || find "$folder" -name '*.h' -o -name '*.cpp' -o -name '*.cpp.in'
    done | sort
}

# Prints what is forbidden, one place a line.
includes() {
    local lower=() upper=("${LIBRARY[@]}") folder
    for folder in "${LIBRARY[@]}"; do
        lower+=("$folder")
        upper=("${upper[@]:1}")
        local forbidden
        forbidden=$(IFS='|' && printf '%s' "${upper[*]}${upper[*]:+|}server|emulator")
        sources_of "$folder" | xargs -r grep -nHE "^ *# *include \"($forbidden)/" /dev/null |
            sed "s|\$| -- $folder/ may include ${lower[*]} only|"
    done
}

formatter() {
    sources_of "${PRODUCT[@]}" | xargs grep -nH 'clang-format off'
}

length() {
    sources_of "${PRODUCT[@]}" | xargs awk -v most="$MOST_LINES" '
        FNR == most + 1 { long[FILENAME] }
        FILENAME in long { long[FILENAME] = FNR }
        END { for (file in long) print file ": " long[file] " lines; at most " most }'
}

case ${1:-} in
    includes | formatter | length) ;;
    *)
        echo "usage: $0 includes|formatter|length" >&2
        exit 2
        ;;
esac
if [ "$(sources_of "${PRODUCT[@]}" | wc -l)" -lt 50 ]; then
    echo "the sources are not where they were" >&2
    exit 2
fi
found=$("$1")
if [ -n "$found" ]; then
    printf '%s\n' "$found"
    exit 1
fi
