# SPDX-License-Identifier: MIT
# Completion of zelctl for bash: zelctl itself knows its commands, paths and values.

_zelctl() {
    local line=${COMP_LINE:0:COMP_POINT} candidate
    COMPREPLY=()
    [[ $line == *[[:space:]]* ]] || return
    line=${line#"${line%%[![:space:]]*}"}
    while IFS= read -r candidate; do
        # One that goes on has no blank at its end; blanks within it stay one word.
        if [[ $candidate == *' ' ]]; then
            candidate=${candidate% }
            [[ $candidate == *' '* ]] && printf -v candidate %q "$candidate"
            candidate+=' '
        fi
        COMPREPLY+=("$candidate")
    done < <("${COMP_WORDS[0]}" complete -- "${line#*[[:space:]]}" 2>/dev/null)
}

complete -o nospace -F _zelctl zelctl
