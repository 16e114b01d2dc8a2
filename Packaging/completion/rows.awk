# What the help of a program tells, a row each: option or command, kind of its value, meaning; with tabs between them.
/^[^ ].*:$/ { section = $0 }
/^  [^ ]/ {
    head = substr($0, 3); meaning = ""; value = ""
    gap = index(head, "  ")
    if (gap) { meaning = substr(head, gap); sub(/^ +/, "", meaning); head = substr(head, 1, gap - 1) }
    gsub(/,/, " ", head)
    count = split(head, words, " ")
    if (words[1] ~ /^-/) {
        if (words[count] !~ /^-/) value = words[count--]
        for (i = 1; i <= count; i++) print words[i] "\t" value "\t" meaning
    } else if (section == "Commands:" && count == 1) print words[1] "\t\t" meaning
}
