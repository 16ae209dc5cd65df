# Completion of tandem-trim for bash. The program itself prints the words.
_tandem_trim() {
  # Splits the line before the cursor as bash does, but expands nothing. Bash replaces the part of the last word after an
  # open quote, else the part after the last word break.
  local line=${COMP_LINE:0:COMP_POINT} words=() word='' begun='' quote='' unquoted='' unbroken='' char i
  for ((i = 0; i < ${#line}; ++i)); do
    char=${line:i:1}
    if [[ $char == "$quote" ]]; then
      quote=''
    elif [[ ! $quote && $char == [\'\"] ]]; then
      quote=$char unquoted=$word begun=1
    elif [[ $char == \\ && $quote != \' ]]; then
      char=${line: ++i:1}
      [[ $quote && $char != [\$\`\"\\] ]] && word+=\\
      word+=$char begun=1
    elif [[ ! $quote && $char == [[:blank:]] ]]; then
      [[ $begun ]] && words+=("$word")
      word='' begun='' unbroken=''
    else
      word+=$char begun=1
      [[ ! $quote && $COMP_WORDBREAKS == *"$char"* ]] && unbroken=$word
    fi
  done
  words+=("$word")
  mapfile -t COMPREPLY < <("$1" --complete "${words[@]:1}" 2>/dev/null)
  [[ ${COMPREPLY[0]} == *= ]] && compopt -o nospace

  # Quotes the replies: a server may give a printer any name, but no part of a name may become a command.
  local stem=$unbroken reply special
  [[ $quote ]] && stem=$unquoted
  for i in "${!COMPREPLY[@]}"; do
    reply=${COMPREPLY[i]#"$stem"}
    case $quote in
      \') reply=${reply//\'/"'\\''"} ;;
      \") for special in \\ \$ \` \"; do reply=${reply//"$special"/"\\$special"}; done ;;
      *) printf -v reply %q "$reply" ;;
    esac
    COMPREPLY[i]=$reply$quote
  done
}
complete -o bashdefault -o default -F _tandem_trim tandem-trim
