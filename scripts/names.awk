# names.awk: what each source declares at namespace scope, one name a line:
#
#   <file> <name> <how>
#
# How: "outside" for a definition that the linker can see (a class, a scoped enum, a function with a
# body, a variable), "inside" for one that stays in its source (anonymous namespace, static,
# constant), "mention" for a declaration, an alias, an enumerator or a macro. It reads the house's own
# manner of C++ and no other: clang-format has been over it, and macros make no declarations.

function forget() { count = 0; round = 0; angle = 0 }
function note(name, how) {
    if (name ~ /^[A-Za-z_][A-Za-z0-9_]*$/ && name !~ /_$/ && name !~ /^[A-Z0-9_]+$/ && name != "main")
        print file, name, how
}
function linkage(how,   i) {
    if (how != "outside") return how
    for (i = 1; i <= depth; ++i) if (scope[i] == "anonymous") return "inside"
    return how
}
function holds(word,   i) {
    for (i = 1; i <= count; ++i) if (token[i] == word) return i
    return 0
}
# The buffer without its template parameters and attributes.
function trim_head(   i, n, open) {
    while (count > 1 && token[1] == "template" && token[2] == "<") {
        open = 0
        for (i = 2; i <= count; ++i) {
            if (token[i] == "<") ++open
            if (token[i] == ">" && --open == 0) break
        }
        n = count
        count = 0
        while (++i <= n) token[++count] = token[i]
    }
}
# The name before the first parenthesis, or "" for a member, an operator or none.
function routine(   i) {
    for (i = 2; i <= count; ++i) {
        if (token[i] != "(") continue
        if (holds("operator") || (i > 2 && token[i - 2] ~ /^(::|~)$/)) return ""
        return token[i - 1]
    }
    return ""
}
# Each declared variable: what stands before "=", "[", "," or the end, outside of angles and brackets.
function variables(how,   i, deep, fresh) {
    if (holds("constexpr") || holds("const") || holds("static")) {
        if (!holds("inline")) how = "inside"
    }
    if (holds("extern")) how = "mention"
    deep = 0
    fresh = 1
    for (i = 2; i <= count + 1; ++i) {
        if (i <= count && token[i] ~ /^[<({[]$/) {
            if (deep == 0 && fresh && token[i] ~ /^[{[]$/) {
                note(token[i - 1], linkage(how))
                fresh = 0
            }
            ++deep
            continue
        }
        if (i <= count && token[i] ~ /^[])}>]$/) { --deep; continue }
        if (deep != 0) continue
        if (i > count || token[i] == "," || token[i] == "=") {
            if (fresh && token[i - 2] != "::") note(token[i - 1], linkage(how))
            fresh = i <= count && token[i] == ","
        }
    }
}
function opened(   i, name) {
    if ((i = holds("namespace"))) return i == count ? "anonymous" : "namespace"
    if (token[1] == "extern" && count <= 2) return "namespace"
    trim_head()
    if ((i = holds("enum")) && !holds("(")) {
        name = token[i + 1] ~ /^(class|struct)$/ ? token[i + 2] : token[i + 1]
        note(name, linkage("outside"))
        return token[i + 1] ~ /^(class|struct)$/ ? "body" : "enumerators"
    }
    if (!holds("=") && (token[1] ~ /^(class|struct|union)$/)) {
        note(token[2], linkage("outside"))
        return "body"
    }
    if (holds("(") && (!holds("=") || holds("=") > holds("("))) {
        if (token[1] != ",") note(routine(), linkage(holds("static") ? "inside" : "outside"))
        return "body"
    }
    return "value"
}
function ended() {
    trim_head()
    if (count == 0 || token[1] ~ /^(static_assert|friend)$/) return
    if (token[1] == "using") {
        if (count > 3 && token[3] == "=") note(token[2], "mention")
    } else if (token[1] ~ /^(class|struct|enum)$/ && count <= 3) {
        return  # a name that is defined elsewhere
    } else if (holds("(") && (!holds("=") || holds("=") > holds("("))) {
        note(routine(), "mention")
    } else {
        variables("outside")
    }
}
function take(word) {
    if (depth > 0 && scope[depth] ~ /^(body|value|enumerators)$/) {
        if (word == "{") scope[++depth] = "body"
        else if (word == "}") {
            was = scope[depth--]
            if (was == "body" && (depth == 0 || scope[depth] ~ /^(namespace|anonymous)$/)) forget()
        } else if (scope[depth] == "enumerators" && (last == "{" || last == ",")) note(word, "mention")
        last = word
        return
    }
    last = word
    if (word == "{") {
        what = opened()
        scope[++depth] = what
        if (what == "value") { token[++count] = "{"; token[++count] = "}" }
        else if (what != "body") forget()
    } else if (word == "}") {
        if (depth > 0) --depth
        forget()
    } else if (word == ";") {
        ended()
        forget()
    } else token[++count] = word
}
FNR == 1 { file = FILENAME; depth = 0; forget(); comment = 0; macro = 0 }
{
    line = $0
    if (macro || line ~ /^#/) {
        if (!macro && line ~ /^#define /) { name = $2; sub(/\(.*/, "", name); print file, name, "mention" }
        macro = line ~ /\\$/
        next
    }
    gsub(/'[^'\\]'|'\\.[0-7xA-Fa-f]*'/, "0", line)
    gsub(/"([^"\\]|\\.)*"/, "0", line)
    sub(/\/\/.*/, "", line)
    while (match(line, /[A-Za-z_][A-Za-z0-9_]*|::|[^ \t]/)) {
        take(substr(line, RSTART, RLENGTH))
        line = substr(line, RSTART + RLENGTH)
    }
}
