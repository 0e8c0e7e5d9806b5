# bash completion for quxml
_quxml_paths() {
    local typed=${COMP_LINE:0:COMP_POINT} head='' file i
    for ((i = 2; i < ${#COMP_WORDS[@]}; ++i)); do
        file=${COMP_WORDS[i]//[\"\'\\]/}
        if ((i > COMP_CWORD)) || { ((i < COMP_CWORD)) && [ "${COMP_WORDS[i - 1]}" = '<' ]; }; then
            [ -f "$file" ] && break
        fi
        file=
    done
    [ -n "$file" ] || return
    typed=${typed##*[[:blank:]]}
    case $typed in
        [\"\']*) typed=${typed:1} ;;
        *)
            typed=${typed//\\/}
            head=${typed%"${typed##*[@=:]}"}
            ;;
    esac
    mapfile -t COMPREPLY < <("${COMP_WORDS[0]}" complete -- "$typed" "$file" 2>/dev/null)
    COMPREPLY=("${COMPREPLY[@]#"$head"}")
    compopt -o nospace 2>/dev/null
}
_quxml() {
    local current=${COMP_WORDS[COMP_CWORD]} words=
    COMPREPLY=()
    case $COMP_CWORD:${COMP_WORDS[1]} in
        1:*) words="format sort check loss outline query explain diff set unset text add remove edit --version -h --help" ;;
        *:format) words="-h --help -i --in-place --backup --diff --canonical --lossy --quiet --compact --indent --no-declaration --sorted" ;;
        *:sort) words="-h --help -i --in-place --backup --diff --canonical --lossy --quiet" ;;
        *:check) words="-h --help --quiet" ;;
        *:loss) words="-h --help" ;;
        *:outline) words="-h --help --tree --paths --quiet" ;;
        *:query) words="-h --help --prefix -0 --null --value --attribute --path --count --columns --json --header --with-filename --no-filename --lossy --quiet --arg" ;;
        *:explain) words="-h --help --prefix --arg" ;;
        *:diff) words="-h --help --quiet --lossy" ;;
        *:set) words="-h --help -i --in-place --backup --diff --quiet --arg --create" ;;
        *:unset) words="-h --help -i --in-place --backup --diff --quiet --arg" ;;
        *:text) words="-h --help -i --in-place --backup --diff --quiet --arg --create" ;;
        *:add) words="-h --help -i --in-place --backup --diff --quiet --item --text --attribute --sorted --arg --create" ;;
        *:remove) words="-h --help -i --in-place --backup --diff --quiet --arg" ;;
        *:edit) words="-h --help -i --in-place --backup --diff --quiet -e --edit --arg" ;;
    esac
    if [ "$COMP_CWORD" -gt 1 ] && [ "${current:0:1}" != - ]; then
        case ${COMP_WORDS[1]} in
            query | set | unset | text | add | remove) _quxml_paths ;;
        esac
        [ "${#COMPREPLY[@]}" -gt 0 ] || mapfile -t COMPREPLY < <(compgen -f -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
}
complete -o filenames -F _quxml quxml
