# Takes the documents apart. Each line of output is one part: FILE TAB LINE TAB WHAT TAB TEXT, where WHAT is
#   sh        a command line of a block that is marked "sh"
#   code:L    a line of a block that is marked with another language L
#   end:L     the end of such a block
#   span      what stands between two backticks
#   link      the target of a link or a picture
#   anchor    a heading, as links name it
#   wrong     something that no document may have; TEXT says what
# A command that goes on behind a "\" at the end of a line is one; comments behind commands are left out.

function give(what, text) { printf "%s\t%d\t%s\t%s\n", FILENAME, FNR, what, text }

function anchor_of(heading) {
    gsub(/`|\*/, "", heading)
    heading = tolower(heading)
    gsub(/[^a-z0-9 _-]/, "", heading)
    gsub(/ /, "-", heading)
    return heading
}

FNR == 1 {
    if (language != "") give("wrong", "a block in the document before does not end")
    language = ""
    list = 0
    blank = 1
}

/^```/ {
    if (language != "") {
        if (language != "sh") give("end:" language, "")
        language = ""
    } else {
        language = substr($0, 4)
        if (language == "") give("wrong", "a block does not say what it is: ```sh, ```text or a language")
        if (language == "") language = "text"
        command = ""
    }
    blank = 0
    next
}

language == "sh" {
    line = $0
    sub(/(^| +)# .*$/, "", line)
    if (line ~ /\\$/) {
        command = command substr(line, 1, length(line) - 1)
        next
    }
    line = command line
    command = ""
    gsub(/^ +| +$/, "", line)
    if (line != "") give("sh", line)
    next
}

language != "" {
    give("code:" language, $0)
    next
}

/^ *$/ {
    blank = 1
    next
}

{
    if ($0 ~ /^ *([-*]|[0-9]+\.) /) list = 1
    else if ($0 !~ /^ /) list = 0
    if (blank && !list && $0 ~ /^    /) give("wrong", "a block without ``` around it")
    blank = 0
}

/^#+ / {
    heading = $0
    sub(/^#+ +/, "", heading)
    give("anchor", anchor_of(heading))
}

{
    rest = $0
    while (match(rest, /`[^`]*`/)) {
        give("span", substr(rest, RSTART + 1, RLENGTH - 2))
        rest = substr(rest, 1, RSTART - 1) " " substr(rest, RSTART + RLENGTH)
    }
    if (rest ~ /`/) give("wrong", "words between ` and ` go on in the next line")
    while (match(rest, /\]\([^)]*\)/)) {
        give("link", substr(rest, RSTART + 2, RLENGTH - 3))
        rest = substr(rest, RSTART + RLENGTH)
    }
}
