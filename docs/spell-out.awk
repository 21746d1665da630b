#!/usr/bin/awk -f
# What a reader of a header or page sees at once and Doxygen does not: that the comment above several functions is
# for all of them, up to the next blank line; that a field without a comment is one that no member reads; and that
# an apostrophe does not end what a back-quote began. On a page a member is linked to its description.

function code(line,    parts, count, i) {
    count = split(line, parts, "`")
    if (count % 2 == 0)
        return line
    line = parts[1]
    for (i = 2; i <= count; ++i) {
        quote = parts[i - i % 2] ~ /\047/ ? "``" : "`"
        line = line (parts[i - i % 2] == "" ? "`" : quote) parts[i]
    }
    return line
}

# A member named on a page as call() leads to its description, and one that does not exist is a warning.
function linked(line,    parts, count, i, text, result, name, scope) {
    count = split(line, parts, "`")
    for (i = 1; i <= count; i += 2) {
        text = parts[i]
        result = ""
        while (match(text, /([A-Za-z]+::)?[a-z][A-Za-z0-9]+\(\)/)) {
            name = substr(text, RSTART, RLENGTH)
            scope = name ~ /::/ ? "" : "AppRuntime::"
            sub(/\(\)$/, "", name)
            result = result substr(text, 1, RSTART - 1) "\\ref " scope name " \"" name "()\""
            text = substr(text, RSTART + RLENGTH)
        }
        parts[i] = result text
    }
    line = parts[1]
    for (i = 2; i <= count; ++i)
        line = line "`" parts[i]
    return line
}

FNR == 1 { page = FILENAME ~ /\.md$/ }
/^```/ { fenced = !fenced }
!fenced && /`/ && /\047/ { $0 = code($0) }
page {
    if ($0 == "# AppRuntime") # one README of several is the first page
        $0 = $0 " {#mainpage}"
    gsub(/\]\(README\.md\)/, "](index.html)")
    gsub(/\]\((\.\.\/)?runtime\/core\/appruntime\.h\)/, "](classAppRuntime.html)")
    if (!fenced)
        $0 = linked($0)
    print
    next
}

function ends() { declaring = !/;( *\/\/.*)?$/ }

/^ *\/\/\/([^<]|$)/ {
    comment = fresh ? comment "\n" $0 : $0
    fresh = 1
    shared = 0
    print
    next
}

/^ *$/ { comment = ""; fresh = shared = declaring = 0 }

/^    [A-Za-z[]/ && !declaring {
    if (/^    (struct|class|using|friend|template|requires|public)/) {
        print
        next
    }
    if (/^[^{]*\(/) {
        if (shared)
            print comment
        shared = 1
    } else if (!fresh && !/\/\/\/</ && /\{/) {
        spare = "/** Kept for programs of the family. */"
        match($0, /^    [^ ]+/)
        type = substr($0, 1, RLENGTH)
        gsub(/\}, /, "};" type " ")
        gsub(type " ", "    " spare type " ")
    }
    fresh = 0
    ends()
    print
    next
}

declaring { ends() }

{ print }
