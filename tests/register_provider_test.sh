#!/usr/bin/env bash
# register-provider as it is installed, with a server that has the commands of OpenPegasus: what it leaves in
# the server after each call, and after one whose last steps fail.
#
# Usage: register_provider_test.sh CMAKE BUILD
set -euo pipefail
cmake=$1
build=$2
folder=$(mktemp -d)
leave() {
    [ -z "${server:-}" ] || kill "$server"
    rm -rf "$folder"
}
trap leave EXIT

"$cmake" --install "$build" --component provider --prefix "$folder/installed" >/dev/null
home=$folder/home
repository=$home/repository
mkdir -p "$home/bin" "$repository"
for command in cimconfig cimmof cimprovider cimcli; do
    cp "$(dirname "$0")/fake_openpegasus.sh" "$home/bin/$command"
done
# The server's process shows which folders its loader looks in.
mkdir "$folder/platform"
: >"$folder/platform/libkestoplatform.so.1"
cp "$(command -v sleep)" "$home/bin/cimserver"
LD_LIBRARY_PATH=$folder/platform "$home/bin/cimserver" 600 &
server=$!

echo lib >"$repository/providerDir-c"
echo lib >"$repository/providerDir-p"
echo KESTO_FCPort >"$repository/classes" # the switch's own management has declared it
: >"$repository/modules"
cp -r "$repository" "$folder/before"

register() { "$folder/installed/sbin/register-provider" pegasus --server-home "$home" "$@"; }
failures=0
check() { # SENTENCE COMMAND...
    local sentence=$1
    shift
    if "$@" >"$folder/output" 2>&1; then
        echo "ok      $sentence"
    else
        echo "FAILED  $sentence"
        cat "$folder/output"
        failures=$((failures + 1))
    fi
}
is_as() { diff -r "$folder/$1" "$repository"; }
ends_with() { # STATUS COMMAND...
    local expected=$1 status=0
    shift
    "$@" || status=$?
    [ "$status" = "$expected" ]
}
names_library() {
    local dir
    dir=$(sed 's/^lib://' "$repository/providerDir-c")
    [ -f "$dir/libFCIPProvider.so" ] && cmp "$repository/providerDir-c" "$repository/providerDir-p"
}
says() { # TEXT COMMAND...
    local text=$1
    shift
    "$@" | tee /dev/stderr | grep -qF -- "$text"
}

check "a server that does not serve the classes fails the check" ends_with 1 register --check
echo 'cimmof -n *' >"$repository/refused"
check "a registration that is refused ends with 1" ends_with 1 register
rm "$repository/refused"
check "nothing is left of it" is_as before
echo 'cimcli ni *' >"$repository/refused"
check "a server that does not answer ends with 1" ends_with 1 register
rm "$repository/refused"
check "nothing is left of that" is_as before

check "it registers" says "The server answers: 1 tunnels." register
check "the library is in the folder that is named" names_library
check "the module is registered" grep -qx FCIPProviderModule "$repository/modules"
check "the classes are loaded" grep -qx KESTO_FCIPSettings "$repository/classes"
cp -r "$repository" "$folder/registered"
check "it registers again" register
check "that changes nothing" is_as registered
check "it takes everything back" register --remove
check "the server is as it was before" is_as before
check "there is nothing to take back then" register --remove
check "and nothing changes" is_as before
kill "$server"
wait "$server" || true
server=
if ! /sbin/ldconfig -p | grep -q 'libkestoplatform\.so\.1 '; then
    check "without a platform library it ends with 1" ends_with 1 register
    check "and nothing changes" is_as before
fi
[ "$failures" = 0 ]
