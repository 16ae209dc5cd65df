# Completion of tandem-trim for bash. The program itself gives the words.
_tandem_trim() {
  local line=${COMP_LINE:0:COMP_POINT} words
  read -ra words <<<"$line"
  [[ $line == *[[:blank:]] ]] && words+=('')
  mapfile -t COMPREPLY < <("$1" --complete "${words[@]:1}" 2>/dev/null)
  [[ ${COMPREPLY[0]} == *= ]] && compopt -o nospace
  # Bash completes what follows the last of these in a word.
  local current=${words[-1]} breaks=${COMP_WORDBREAKS//[^=:]/} prefix='' i
  [[ $breaks ]] && prefix=${current%"${current##*["$breaks"]}"}
  # A server may name a printer as it likes, but no part of a name is a command.
  for i in "${!COMPREPLY[@]}"; do printf -v "COMPREPLY[i]" %q "${COMPREPLY[i]#"$prefix"}"; done
}
complete -o bashdefault -o default -F _tandem_trim tandem-trim
