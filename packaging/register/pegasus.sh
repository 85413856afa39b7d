# OpenPegasus: classes with cimmof, registration in root/PG_InterOp, providerDir with cimconfig. The server
# has to run; it takes all of that over at once. Sourced by register-provider.
# shellcheck shell=bash

: "${data:?}" "${provider_dir:?}" "${namespace:?}" "${memory:?}"

MODULE=FCIPProviderModule

pegasus_prepare() {
    if [ -n "$server_home" ]; then
        export PEGASUS_HOME=$server_home PATH=$server_home/bin:$PATH
    fi
    need cimserver cimconfig cimmof cimprovider cimcli
    cimconfig -l -c >/dev/null 2>&1 || fail "the OpenPegasus server does not run; start it first (cimserver)"
}

provider_dirs() { cimconfig -g providerDir "$1" | sed 's/^[^:]*: //'; } # -c current, -p planned

set_provider_dirs() { # CURRENT PLANNED
    # Relative entries are relative to the server's home.
    (cd "${PEGASUS_HOME:-/}" &&
        cimconfig -s providerDir="$1" -c && cimconfig -s providerDir="$2" -p) >/dev/null
}

known_classes() { cimcli nc -di -n "$1" 2>/dev/null || true; } # NAMESPACE

delete_classes() { # NAMESPACE CLASS... in the order of their definition
    local from=$1 known class
    shift
    known=$(known_classes "$from")
    for class in $(printf '%s\n' "$@" | tac); do
        has_line "$class" "$known" || continue
        cimcli dc "$class" -n "$from" >/dev/null || say "The class $class stays: it is still in use."
    done
}

is_registered() { has_line "$MODULE" "$(cimprovider -l)"; }

unregister() {
    cimprovider -d -m "$MODULE" >/dev/null 2>&1 || true # it may be disabled already
    cimprovider -r -m "$MODULE" >/dev/null
}

# The server keeps an older registration, and says success; so the old one goes first.
pegasus_take_back() {
    if is_registered; then
        unregister
        say "The registration of $MODULE is removed."
    fi
    local classes
    mapfile -t classes < <(recall classes)
    if [ ${#classes[@]} -gt 0 ]; then
        delete_classes "$(recall namespace)" "${classes[@]}"
        say "The ${#classes[@]} classes in $(recall namespace) are removed."
    fi
}

pegasus_register() {
    platform_library cimserver
    local added
    added=$(recall provider-dir)
    pegasus_take_back
    forget_classes

    local current planned
    current=$(provider_dirs -c)
    planned=$(provider_dirs -p)
    if ! has_line "$provider_dir" "${current//:/$'\n'}"; then
        on_failure set_provider_dirs "$current" "$planned"
        set_provider_dirs "$current:$provider_dir" "$planned:$provider_dir" ||
            fail "cimconfig could not add $provider_dir to providerDir"
        added=$provider_dir
        say "providerDir is now $current:$provider_dir."
    fi

    local known mof=$data/FCIPProvider.mof class created=()
    known=$(known_classes "$namespace")
    has_line CIM_ManagedElement "$known" || mof=$data/FCIPProviderStandalone.mof
    for class in $(classes_of "$mof"); do
        has_line "$class" "$known" || created+=("$class")
    done
    on_failure delete_classes "$namespace" "${created[@]}"
    # Classes that others have declared, on a switch its own, stay as they are.
    cimmof -w -aEV -n "$namespace" "$mof" || fail "cimmof could not load $mof into $namespace"
    say "$(basename "$mof") is loaded into $namespace: ${#created[@]} new classes."

    on_failure unregister
    cimmof -n root/PG_InterOp "$(in_namespace "$data/FCIPProviderR.mof")" || fail "cimmof could not register"
    say "The provider is registered."
    pegasus_check

    remember namespace "$namespace"
    [ ${#created[@]} -eq 0 ] || remember classes "$(printf '%s\n' "${created[@]}")"
    remember provider-dir "$added"
    [ -z "${remember_platform:-}" ] || remember loader-file yes
}

forget_classes() { rm -f "$memory/classes"; }

pegasus_check() {
    local answer
    if ! answer=$(cimcli ni "$CHECKED_CLASS" -n "$namespace" 2>&1); then
        fail "the server does not answer for $CHECKED_CLASS:" "$answer"
    fi
    say "The server answers: $(grep -c "^$CHECKED_CLASS\." <<<"$answer" || true) tunnels."
}

pegasus_remove() {
    pegasus_take_back
    local added current planned
    added=$(recall provider-dir)
    if [ -n "$added" ]; then
        current=$(provider_dirs -c)
        planned=$(provider_dirs -p)
        set_provider_dirs "$(without_dir "$current" "$added")" "$(without_dir "$planned" "$added")"
        say "providerDir is $(provider_dirs -c) again."
    fi
    forget_platform
    forget
    say "OpenPegasus does not serve the provider."
}

without_dir() { # LIST DIR
    local rest=":$1:"
    rest=${rest//":$2:"/:}
    rest=${rest#:}
    printf '%s\n' "${rest%:}"
}
