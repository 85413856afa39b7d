# SFCB: classes and registration through its staging area and sfcbrepos, providerDirs in sfcb.cfg. A running
# server is restarted. Sourced by register-provider.
#
# sfcbrepos compiles everything that is staged, the server's own classes too, and needs the CIM schema for
# it. Without the schema, our classes bring their superclasses along and are compiled into the namespace
# directly, if it is empty. Without the compiler, too, they are created by requests.
# shellcheck shell=bash

: "${data:?}" "${provider_dir:?}" "${namespace:?}" "${work:?}" "${url=}" "${user=}" "${restart_command=}"

REGISTRATION=FCIPProvider.reg
CLASSES=FCIPProvider.mof # the staged file, whichever of the two it is

sfcb_prepare() {
    [ -z "$server_home" ] || export PATH=$server_home/sbin:$server_home/bin:$PATH
    need sfcbd sfcbstage sfcbunstage sfcbrepos
    config=$server_home/etc/sfcb/sfcb.cfg
    [ -f "$config" ] || fail "there is no $config; name the server's folder with --server-home"
    registrations=$(setting registrationDir)
    registrations=${registrations:-$server_home/var/lib/sfcb/registration}
    staging=$(default_of 'specify staging directory')
    schema=$(default_of 'containing CIM Schema MOFs')/CIM_Schema.mof
    [ -z "$(server_pid)" ] || command -v curl >/dev/null ||
        fail "curl is missing, with which the running server is sent requests"
    [ -z "$user" ] || ask_password
}

# Once, for all requests: curl would ask at each of them.
ask_password() {
    local password login
    [ ! -t 0 ] || printf 'Password of %s: ' "$user" >&2
    IFS= read -rs password || [ -n "$password" ] || fail "no password on standard input"
    [ ! -t 0 ] || echo >&2
    login=$user:$password
    login=${login//\\/\\\\}
    (umask 077 && printf 'user = "%s"\n' "${login//\"/\\\"}" >"$work/login")
}

# The last of several settings counts.
setting() { sed -nE "s/^ *$1 *: *(.*[^ ]) *$/\1/p" "$config" | tail -n 1; }

# The folders that were compiled into the server's commands.
default_of() { sfcbrepos -h 2>/dev/null | sed -nE "s|.*$1 \[(.*)\].*|\1|p"; }

# The process that the server's others come from.
server_pid() {
    local pid parent
    for pid in $(processes_of sfcbd); do
        parent=$(awk '$1 == "PPid:" { print $2 }' "/proc/$pid/status" 2>/dev/null || true)
        [ "$(cat "/proc/$parent/comm" 2>/dev/null || true)" = sfcbd ] || { echo "$pid" && return; }
    done
}

children_of() { # PID; those that still run
    awk -v parent="$1" '$1 == "Pid:" { pid = $2 } $1 == "State:" { state = $2 }
        $1 == "PPid:" && $2 == parent && state != "Z" { print pid }' /proc/[0-9]*/status 2>/dev/null || true
}

within() { # SECONDS COMMAND...
    local tenth tenths=$((10 * $1))
    shift
    for ((tenth = 0; tenth < tenths; ++tenth)); do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    return 1
}

have_ended() { # PID...
    local pid
    for pid in "$@"; do [ ! -d "/proc/$pid" ] || [ "$(state_of "$pid")" = Z ] || return 1; done
}

state_of() { awk '$1 == "State:" { print $2 }' "/proc/$1/status" 2>/dev/null || true; }

answers() { request EnumerateClassNames; }

# Makes a running server read configuration, registrations and classes again. Fails when it did not restart:
# sfcbd heeds SIGHUP once, and then no more.
restart() {
    local pid unit children
    pid=$(server_pid)
    [ -n "$pid" ] || return 1
    unit=$(sed -nE 's|.*/([^/]+\.service)$|\1|p' "/proc/$pid/cgroup" | head -n 1)
    if [ -n "$restart_command" ]; then
        sh -c "$restart_command" || fail "'$restart_command' failed"
    elif [[ $unit == *sfcb* ]]; then
        systemctl restart "$unit" || fail "systemctl could not restart $unit"
    else
        mapfile -t children < <(children_of "$pid")
        kill -HUP "$pid"
        within 10 have_ended "${children[@]}" || return 1
    fi
    within 10 answers ||
        fail "sfcbd does not answer after its restart; its log says why." \
            "If it asks for a user, name one with --user."
}

# --- Requests

server_url() {
    local port
    if [ -n "$url" ]; then
        printf '%s\n' "$url"
    elif [ "$(setting enableHttp)" = true ]; then
        port=$(setting httpPort)
        printf 'http://127.0.0.1:%s\n' "${port:-5988}"
    else
        port=$(setting httpsPort)
        printf 'https://127.0.0.1:%s\n' "${port:-5989}"
    fi
}

# request OPERATION [PARAMETERS AS XML]: prints the answer; fails when there is none, or an error.
request() {
    local path='' name options=(--silent --show-error --max-time 30 --netrc-optional --http1.1)
    for name in ${namespace//\// }; do path+="<NAMESPACE NAME=\"$name\"/>"; done
    [ -z "$user" ] || options+=(--config "$work/login")
    # The server's own certificate is its own word only; the request goes to this machine, by no proxy.
    [ -n "$url" ] || options+=(--insecure --noproxy '*')
    local answer
    answer=$(curl "${options[@]}" --header 'Content-Type: application/xml; charset="utf-8"' \
        --header 'CIMOperation: MethodCall' --header "CIMMethod: $1" --header "CIMObject: $namespace" \
        --data-binary @- "$(server_url)/cimom" <<END
<?xml version="1.0" encoding="utf-8"?>
<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ>
<IMETHODCALL NAME="$1"><LOCALNAMESPACEPATH>$path</LOCALNAMESPACEPATH>${2:-}</IMETHODCALL>
</SIMPLEREQ></MESSAGE></CIM>
END
    ) || return 1
    printf '%s\n' "$answer"
    [[ $answer == *"<IMETHODRESPONSE"* && $answer != *"<ERROR "* ]]
}

# What an answer says is wrong; without an ERROR, the answer.
error_text() {
    local pattern='DESCRIPTION="([^"]*)"'
    if [[ $1 =~ $pattern ]]; then printf '%s\n' "${BASH_REMATCH[1]}"; else printf '%s\n' "$1"; fi
}

class_parameter() { # NAME CLASS
    printf '<IPARAMVALUE NAME="%s"><CLASSNAME NAME="%s"/></IPARAMVALUE>' "$1" "$2"
}

sfcb_check() {
    [ -n "$(server_pid)" ] || fail "sfcbd does not run"
    local answer
    if ! answer=$(request EnumerateInstanceNames "$(class_parameter ClassName "$CHECKED_CLASS")" 2>&1); then
        fail "the server does not answer for $CHECKED_CLASS:" \
            "$(error_text "$answer")"
    fi
    say "The server answers: $(grep -o '<INSTANCENAME ' <<<"$answer" | wc -l) tunnels."
}

# --- Registering

add_provider_dir() {
    has_line "$provider_dir" "$(setting providerDirs | tr ' ' '\n')" && return
    cp -p "$config" "$work/sfcb.cfg"
    on_failure cp -p "$work/sfcb.cfg" "$config"
    if [ -n "$(setting providerDirs)" ]; then
        sed -i -E "s|^( *providerDirs *:.*[^ ]) *$|\1 $provider_dir|" "$config"
    else
        printf 'providerDirs: %s\n' "$provider_dir" >>"$config"
    fi
    remember_dir=$provider_dir
    say "providerDirs is now $(setting providerDirs)."
}

# The staging area and what was made of it, as they were before.
keep_repository() {
    cp -a "$registrations" "$work/registration"
    [ ! -d "$staging" ] || cp -a "$staging" "$work/stage"
    on_failure restore_repository
}

restore_repository() {
    rm -rf "$registrations" "$staging"
    cp -a "$work/registration" "$registrations"
    [ ! -d "$work/stage" ] || cp -a "$work/stage" "$staging"
}

stage() { # MOF
    cp "$1" "$work/$CLASSES"
    local registration
    registration=$(in_namespace "$data/$REGISTRATION")
    (cd "$work" && sfcbstage -s "$staging" -n "$namespace" -r "$registration" "$CLASSES") ||
        fail "sfcbstage could not stage $1"
}

unstage() { # NAMESPACE
    sfcbunstage -s "$staging" -n "$1" -r "$REGISTRATION" "$CLASSES"
}

rebuild() {
    sfcbrepos -f -s "$staging" -r "$registrations" >"$work/sfcbrepos.log" 2>&1 || {
        cat "$work/sfcbrepos.log" >&2
        fail "sfcbrepos could not make the repository; its messages are above"
    }
}

register_directly() {
    take_out_of_register
    cat "$(in_namespace "$data/$REGISTRATION")" >>"$registrations/providerRegister"
}

# Our entries are those that name our library.
take_out_of_register() {
    awk '/^\[/ { flush() }
         { entry = entry $0 "\n" }
         /^ *location: *FCIPProvider *$/ { ours = 1 }
         END { flush() }
         function flush() { if (!ours) printf "%s", entry; entry = ""; ours = 0 }' \
        "$registrations/providerRegister" >"$work/providerRegister"
    cat "$work/providerRegister" >"$registrations/providerRegister"
}

compile_directly() {
    printf '// The classes bring all that they need.\n' >"$work/CIM_Schema.mof"
    mkdir -p "$registrations/repository/$namespace"
    sfcbmof -d "$registrations/repository/" -n "$namespace" -o classSchemas -I "$work" -i CIM_Schema.mof \
        "$data/FCIPProviderStandalone.mof" >"$work/sfcbmof.log" 2>&1 || {
        cat "$work/sfcbmof.log" >&2
        fail "sfcbmof could not compile the classes; its messages are above"
    }
}

# The stock class provider creates no classes; the one that does takes its place meanwhile. It wants a file
# that exists, and drops the first class of it when it starts again; classes named DMY_... are dropped by
# design.
#
# sfcbd crashes on a reference without a value, and a class has no use for one; any value does.
create_by_request() {
    local class end='</PROPERTY.REFERENCE>'
    local value='<VALUE.REFERENCE><INSTANCENAME CLASSNAME="DMY_First"/></VALUE.REFERENCE>'
    [ -n "$(server_pid)" ] || fail "sfcbd does not run; it has to, to be sent the classes"
    local classes=$data/FCIPProviderStandalone.xml
    [ -f "$classes" ] || fail "there is no sfcbmof, and no $classes"
    cp -p "$registrations/providerRegister" "$work/stock-register"
    sed -i -E 's/^( *location: *)sfcClassProvider(Gz|Sf|Mem) *$/\1sfcClassProvider/' \
        "$registrations/providerRegister"
    mkdir -p "$registrations/repository/$namespace"
    : >"$registrations/repository/$namespace/classSchemas"
    undo=("$(printf '%q ' restart)" "${undo[@]}")
    restart || fail "sfcbd did not restart; name a command that does it with --restart"
    {
        echo '<CLASS NAME="DMY_First"></CLASS>'
        cat "$classes"
    } | while IFS= read -r class; do
        class=${class//"$end"/"$value$end"}
        request CreateClass "<IPARAMVALUE NAME=\"NewClass\">$class</IPARAMVALUE>" >"$work/answer" ||
            fail "sfcbd does not take the class ${class:0:60}...:" "$(error_text "$(cat "$work/answer")")"
    done
    cat "$work/stock-register" >"$registrations/providerRegister"
}

sfcb_register() {
    local before
    before=$(recall namespace)
    [ -z "$before" ] || [ "${before,,}" = "${namespace,,}" ] ||
        fail "the provider is registered in $before; take that back first, with --remove"
    platform_library sfcbd
    keep_repository
    remember_dir=$(recall provider-dir)
    add_provider_dir

    local how
    if [ -f "$schema" ] && command -v sfcbmof >/dev/null; then
        how=staged
        stage "$data/FCIPProvider.mof"
        rebuild
        say "The classes and the registration are staged, and the repository is made anew."
    elif [ "$(recall how)" != direct ] && [ -s "$registrations/repository/$namespace/classSchemas" ]; then
        fail "the namespace $namespace has classes already, and there is no CIM schema to make it anew:" \
            "install the schema ($schema), or choose another namespace with --namespace"
    elif command -v sfcbmof >/dev/null; then
        how=direct
        compile_directly
        register_directly
        say "There is no CIM schema: the classes are compiled into $namespace with superclasses of their own."
    else
        how=direct
        create_by_request
        register_directly
        say "There is no MOF compiler: the classes are created in $namespace, without superclasses."
    fi

    if [ -z "$(server_pid)" ]; then
        say "sfcbd does not run. Start it, then: register-provider sfcb --check"
    elif undo=("$(printf '%q ' restart)" "${undo[@]}") && restart; then
        sfcb_check
    else
        say "sfcbd runs as before. Restart it, then: register-provider sfcb --check"
    fi
    remember how "$how"
    remember namespace "$namespace"
    remember provider-dir "$remember_dir"
    [ -z "${remember_platform:-}" ] || remember loader-file yes
}

sfcb_remove() {
    keep_repository
    local added used
    used=$(recall namespace)
    used=${used:-$namespace}
    case $(recall how) in
        direct)
            rm -f "$registrations/repository/$used/"{classSchemas,qualifiers,qualifiers.idx}
            take_out_of_register
            ;;
        *)
            if [ -f "$staging/regs/$REGISTRATION" ] || [ -f "$staging/mofs/$used/$CLASSES" ]; then
                unstage "$used"
                rebuild
            fi
            ;;
    esac
    added=$(recall provider-dir)
    if [ -n "$added" ]; then
        sed -i -E "/^ *providerDirs *:/ s| +$added( \|$)|\1|" "$config"
        say "providerDirs is $(setting providerDirs) again."
    fi
    forget_platform
    forget
    undo=() # a server that does not restart brings nothing back
    if [ -n "$(server_pid)" ] && ! restart; then
        say "sfcbd runs as before. Restart it, so that it does not serve the provider any more."
    else
        say "SFCB does not serve the provider."
    fi
}
