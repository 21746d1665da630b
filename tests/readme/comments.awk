# Makes C++ of the examples in the comments of headers: examples.inc for tst_comments.cpp.
#
#   `mid(u"ABCDE"_s, 3, 10)` is `DE`           a call with a result, which may also be a number
#   `checkIn(u"abc"_s, u"X"_s)` leaves `...`   and one with the message it leaves
#   \code ... \endcode                         lines "call; // result, name value"
#
# Each example has an object of its own.

function literal(text) {
    gsub(/\\/, "\\\\", text)
    gsub(/"/, "\\\"", text)
    return "\"" text "\""
}

function apart(statements) {
    print "{ AppRuntime runtime(u\"ORDERS\"_s, argc, argv); " statements " }"
}

function expect(expression, value) {
    return "expect(" literal(FILENAME ": " expression) ", " expression ", " literal(value) ");"
}

function sentences(text,    parts, count, i, call, value) {
    count = split(text, parts, "`")
    for (i = 2; i < count; i += 2) {
        call = "runtime." parts[i]
        if (parts[i] !~ /^[a-z][A-Za-z0-9]*\(.*_s.*\)$/)
            continue
        if (parts[i + 1] == " is " || parts[i + 1] == " gives ")
            apart(expect(call, parts[i + 2]))
        else if (parts[i + 1] == " leaves ")
            apart(call "; " expect("runtime.checkMessage", parts[i + 2]))
        else if (match(parts[i + 1], /^ (is|gives) -?[0-9]+(\.[0-9]+)?/)) {
            value = substr(parts[i + 1], 1, RLENGTH)
            sub(/^ [a-z]+ /, "", value)
            apart(expect(call, value))
        }
    }
}

# A line of a block; what its comment says of the call is looked at, the rest is run as it is.
function line(text,    at, call, rest, results, count, i, name) {
    if (!match(text, /; +\/\/ /) || text ~ /^ *(int|std|const|[A-Z])/)
        return text
    call = substr(text, 1, RSTART - 1)
    sub(/^ */, "", call)
    rest = substr(text, RSTART + RLENGTH)
    if (call ~ /^runtime\.writeTrace\(/) {
        sub(/^runtime\.writeTrace\(/, "", call)
        sub(/\)$/, "", call)
        return expect(call, rest)
    }
    count = split(rest, results, ", ")
    text = expect(call, results[1])
    for (i = 2; i <= count; ++i) {
        name = rest = results[i]
        sub(/ .*/, "", name)
        sub(/^[^ ]* /, "", rest)
        gsub(/^"|"$/, "", rest)
        text = text " " expect(name == "position" ? "runtime.scanCursor->position" : name, rest)
    }
    return text
}

!/^ *\/\/\// || /\/\/\/</ { sentences(paragraph); paragraph = ""; next }

{ sub(/^ *\/\/\/ ?/, "") }

/^\\code/ {
    block = ""
    inside = 1
    next
}

/^\\endcode/ {
    inside = 0
    # A whole program is compiled and not run: there can be one application object only.
    if (sub(/int main\(/, "void program(", block))
        print "struct Program { static " block "};"
    else
        apart(block)
    next
}

inside { block = block (/^int main/ ? $0 : line($0)) "\n"; next }

{ paragraph = paragraph " " $0 }
