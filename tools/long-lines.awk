# Names the lines that exceed the column limit, and fails when there is one. In Markdown the limit is that of the
# text: a table's row is one line, and code is shown as it is.
BEGIN { LIMIT = 110 }
FNR == 1 { fenced = 0 }
/^```/ { fenced = !fenced }
FILENAME ~ /\.md$/ && (fenced || /^\|/ || /^    /) { next }
length($0) > LIMIT {
    print FILENAME ":" FNR ": " length($0) " columns; the limit is " LIMIT
    found = 1
}
END { exit found }
