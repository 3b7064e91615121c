#!/bin/sh
# docs/filter.sh HEADER - turn the comments of a public header into those that doxygen reads: the first one describes
# the file, the others the block of declarations below them
sed -E -e '1s|^/\* [^ ]+ - |/** \\file\n * |' -e 's|^/\* ([^-])|/** \1|' \
    -e 's|^    ([a-z].*;) +/\* (.*) \*/$|    \1 /**< \2 */|' "$1" |
    awk '
        /^\/\*\* / { documented = 1 }
        documented && /^[a-z].*[(;,]/ && !/^(struct|typedef|extern)/ && !open { print "/**@{*/"; open = 1 }
        /^$/ || (open && /^\/\*/) { if (open) print "/**@}*/"; open = 0; documented = /^\/\*\* / }
        { print }
    '
