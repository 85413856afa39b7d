# Turns the KESTO_FCIPProtocolEndPoint instances that "wbemcli ei -nl" prints into a table, one tunnel a row.
# Each instance starts with its object path on a line of its own; each property follows as -Name=value.
BEGIN {
    columns = split("Tunnel|Local address|Remote address|Compression|Rate|Local WWN|Remote WWN", cell, "|")
    for (column = 1; column <= columns; ++column) put(0, column, cell[column])
}

# The object path's own keys hold '=' too, but only properties start with a dash.
/^-/ {
    equals = index($0, "=")
    value = substr($0, equals + 1)
    gsub(/^"|"$/, "", value)
    property[substr($0, 2, equals - 2)] = value
    next
}
/^[^ ]*:KESTO_FCIPProtocolEndPoint/ { finish() }

END {
    finish()
    for (row = 0; row <= tunnels; ++row) {
        line = ""
        for (column = 1; column <= columns; ++column)
            line = line sprintf("%-*s", width[column] + 2, table[row, column])
        sub(/ +$/, "", line)
        print line
    }
    print (tunnels == 1 ? "1 tunnel" : tunnels + 0 " tunnels")
}

function put(row, column, text) {
    table[row, column] = text
    if (length(text) > width[column]) width[column] = length(text)
}

function rate(kilobits) {
    kilobits += 0 # a number, whatever it was read as
    if (kilobits >= 1000000) return kilobits / 1000000 " Gbit/s"
    if (kilobits >= 1000) return kilobits / 1000 " Mbit/s"
    return kilobits " kbit/s"
}

function finish() {
    if (!("TunnelID" in property)) return
    ++tunnels
    put(tunnels, 1, property["TunnelID"])
    put(tunnels, 2, property["LocalIPAddress"])
    put(tunnels, 3, property["RemoteIPAddress"])
    put(tunnels, 4, tolower(property["Compression"]) == "true" ? "on" : "off")
    put(tunnels, 5, rate(property["CommittedRate"]))
    put(tunnels, 6, property["LocalWWN"])
    put(tunnels, 7, property["RemoteWWN"])
    split("", property)
}
