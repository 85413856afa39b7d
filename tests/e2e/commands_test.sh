#!/usr/bin/env bash
# The two commands' own manners: what they do with options that they do not know, and how the tunnels are
# shown.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
failures=0

# expect STATUS TEXT COMMAND...: the command ends with the status and says the text.
expect() {
    local status=$1 text=$2 output actual
    shift 2
    output=$("$@" 2>&1)
    actual=$?
    if [ "$actual" != "$status" ] || [[ $output != *"$text"* ]]; then
        printf 'FAILED: %s: status %s instead of %s, or no "%s" in:\n%s\n' \
            "$*" "$actual" "$status" "$text" "$output"
        failures=$((failures + 1))
    fi
}

expect 0 'Usage: ./run' "$root/run" --help
expect 2 "unknown option '--nonsense'" "$root/run" --nonsense
expect 2 '--port needs a value' "$root/run" --port
expect 2 "not '65536'" "$root/run" --port 65536
expect 2 "not 'x'" "$root/run" --port=x
expect 2 "cannot read the switch's file '/nowhere.json'" "$root/run" --once --switch /nowhere.json
expect 0 'Usage: ./test' "$root/test" --help
expect 2 "unknown option '--nonsense'" "$root/test" --nonsense
expect 2 "unknown group 'nonsense'" "$root/tools/install-dependencies" nonsense
expect 2 'usage: tools/report URL' "$root/tools/report"

table() {
    awk -f "$root/tools/tunnel-table.awk" <<END
127.0.0.1:5988/root/cimv2:KESTO_FCIPProtocolEndPoint.Name="1_a=b"
-Name="1_a=b"
-TunnelID=1
-RemoteIPAddress="10.1.1.2"
-LocalIPAddress="10.1.1.1"
-RemoteWWN="20:00"
-LocalWWN="30:00"
-CommittedRate=1000000
-Compression=TRUE

127.0.0.1:5988/root/cimv2:KESTO_FCIPProtocolEndPoint.Name="12_x"
-TunnelID=12
-RemoteIPAddress="2001:db8::1"
-LocalIPAddress="2001:db8::2"
-RemoteWWN="20:01"
-LocalWWN="30:00"
-CommittedRate=155000
-Compression=FALSE
END
}
expect 0 'Tunnel  Local address  Remote address  Compression  Rate        Local WWN  Remote WWN
1       10.1.1.1       10.1.1.2        on           1 Gbit/s    30:00      20:00
12      2001:db8::2    2001:db8::1     off          155 Mbit/s  30:00      20:01
2 tunnels' table
expect 0 '0 tunnels' awk -f "$root/tools/tunnel-table.awk" /dev/null

exit "$((failures > 0))"
