# bash completion for workbench-cli; the program itself tells its commands and options.

_workbench_cli()
{
    local word=${COMP_WORDS[COMP_CWORD]} program=${COMP_WORDS[0]} words
    if [ "$COMP_CWORD" -eq 1 ]; then
        words="--help --version $("$program" --help 2>/dev/null | sed -n 's/^  \([a-z]\+\) .*/\1/p')"
    elif [[ $word == -* ]]; then
        words=$("$program" "${COMP_WORDS[1]}" --help 2>/dev/null | grep -oE '^  +-[^<]*' | grep -oE -- '-+[a-z][a-z-]*')
    else
        return # files: the completion's default
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o default -F _workbench_cli workbench-cli
