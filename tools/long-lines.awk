# Names the lines that exceed the column limit, and fails when there is one. In Markdown the limit holds for
# the text: a table's row is one line, and code is shown as it is. To be run with LC_ALL=C.
BEGIN { LIMIT = 110 }
FNR == 1 { fenced = 0 }
/^```/ { fenced = !fenced }
FILENAME ~ /\.md$/ && (fenced || /^\|/ || /^    /) { next }
{
    gsub(/[\200-\277]/, "") # the further bytes of a UTF-8 character
    if (length($0) <= LIMIT) next
    print FILENAME ":" FNR ": " length($0) " columns; the limit is " LIMIT
    found = 1
}
END { exit found }
