# Completion of tandem-trim for bash. The program itself gives the words.
_tandem_trim() {
  local line=${COMP_LINE:0:COMP_POINT} words
  read -ra words <<<"$line"
  [[ $line == *[[:blank:]] ]] && words+=('')
  mapfile -t COMPREPLY < <("$1" --complete "${words[@]:1}" 2>/dev/null)
  [[ ${COMPREPLY[0]} == *= ]] && compopt -o nospace
  # Bash completes what follows the last = or : of a word.
  local current=${words[-1]}
  COMPREPLY=("${COMPREPLY[@]#"${current%"${current##*[=:]}"}"}")
}
complete -o bashdefault -o default -F _tandem_trim tandem-trim
