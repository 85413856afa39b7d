# Shared by the project's shell scripts; sourced, never run. Sets the shell options and the project's root.
# shellcheck shell=bash
set -euo pipefail

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export project_root

# A heading in front of each step, so that a long run can be followed.
step() {
    if [ -t 1 ]; then printf '\n\033[1m== %s\033[0m\n' "$*"; else printf '\n== %s\n' "$*"; fi
}

complain() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
}

# fail STATUS MESSAGE...
fail() {
    local status=$1
    shift
    complain "$@"
    exit "$status"
}

# configure PRESET [CMAKE OPTION]...
configure() {
    local preset=$1
    shift
    local log=$project_root/build/$preset/configure.log
    mkdir -p "$(dirname "$log")"
    if ! (cd "$project_root" && cmake --preset "$preset" "$@") >"$log" 2>&1; then
        cat "$log" >&2
        fail 1 "cmake could not configure the preset $preset"
    fi
}

# configure_and_build PRESET [CMAKE OPTION]... -- [TARGET]...
# Ninja shows its progress; without targets everything is built.
configure_and_build() {
    local preset=$1 options=()
    shift
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        options+=("$1")
        shift
    done
    shift
    configure "$preset" "${options[@]}"
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    (cd "$project_root" && cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}") ||
        fail 1 "the preset $preset does not build"
}
