# SPDX-License-Identifier: Apache-2.0
# Lets Doxygen follow the pages' links to headings, "(#key-paths)" and "(guide.md#key-paths)": each heading below the
# title gets its page's name and its own words as a label, and each link names that label. A mail address is kept from
# being read as a command. Code blocks stay as they are.

FNR == 1 {
    page = FILENAME
    sub(/.*\//, "", page)
    sub(/\.md$/, "", page)
}

/^ *```/ { inside = !inside }

!inside && /^##+ / {
    label = tolower($0)
    sub(/^#+ +/, "", label)
    gsub(/[^a-z0-9_ -]/, "", label)
    gsub(/ /, "-", label)
    $0 = $0 " {#" page "-" label "}"
}

!inside {
    done = ""
    rest = $0
    while (match(rest, /\]\([A-Za-z_.]*#[a-z0-9_-]+\)/)) {
        split(substr(rest, RSTART + 2, RLENGTH - 3), link, "#")
        sub(/\.md$/, "", link[1])
        done = done substr(rest, 1, RSTART + 1) "#" (link[1] == "" ? page : link[1]) "-" link[2] ")"
        rest = substr(rest, RSTART + RLENGTH)
    }
    $0 = done rest
    if (!/`/)
        gsub(/@/, "\\\\@")
}

{ print }
