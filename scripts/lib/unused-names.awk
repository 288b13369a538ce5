# Finds names that a file declares with "using a::b;" or "namespace a = b;" at the outside and never says again.

function report(name) {
    for (name in declared) {
        if (said[name] == 1) {
            print declared[name] ": " name " is not used"
            failed = 1
        }
    }
    delete declared
    delete said
}

FNR == 1 { report() }

/^using [A-Za-z0-9_:]+;/ {
    name = $2
    gsub(/.*:|;.*/, "", name)
    declared[name] = FILENAME ":" FNR
}

/^namespace [A-Za-z0-9_]+ = / { declared[$2] = FILENAME ":" FNR }

/^#include |^ *\/\// { next }

{
    count = split($0, words, /[^A-Za-z0-9_]+/)
    for (at = 1; at <= count; ++at) {
        ++said[words[at]]
    }
}

END {
    report()
    exit failed
}
