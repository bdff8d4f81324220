# Completion of kolvane for bash. It does not need bash-completion.

# The resources that are available now, as listed by `kolvane ports`, and the forms that contain an address.
_kolvane_resources() {
  local resource rest
  _kolvane_words TCPIP:: ASRL1::INSTR ASRL2::INSTR USB:: GPIB0:: LPT1 LPT2 OFFLINE
  while read -r resource rest; do
    # Devices choose their names; one that the shell would act on is not completed. "-" means that there is none.
    [[ $resource == - || $resource == *ADDRESS* || $resource == *[!A-Za-z0-9:./_@%+,-]* ]] || _kolvane_words "$resource"
  done < <("$program" ports 2>/dev/null)
}

# _kolvane_files SUFFIX: folders, and files with this suffix in any case; without SUFFIX all files.
_kolvane_files() {
  compopt -o filenames 2>/dev/null
  local entry
  while IFS= read -r entry; do
    [[ ! -d $entry && -n $1 && ${entry,,} != *"$1" ]] || COMPREPLY+=("$entry")
  done < <(compgen -f -- "$cur")
}

# _kolvane_words WORD...: those that start with what was typed, without duplicates.
_kolvane_words() {
  local word
  for word; do
    [[ $word != "$cur"* || " ${COMPREPLY[*]-} " == *" $word "* ]] || COMPREPLY+=("$word")
  done
}

# The values of option $1; fails if it takes none.
_kolvane_values() {
  case $1 in
    --mode) _kolvane_words 2 ;; # 0 and 1 are for hosts only
    --folder) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$cur") ;;
    --connect) _kolvane_resources ;;
    --baud) _kolvane_words 300 600 1200 2400 4800 9600 19200 38400 57600 115200 ;;
    --parity) _kolvane_words none even odd ;;
    --data-bits) _kolvane_words 7 8 ;;
    --stop-bits) _kolvane_words 1 2 ;;
    --send-terminator | --receive-terminator) _kolvane_words LF CR CRLF NONE ;;
    --receive-mode) _kolvane_words terminator auto count ;;
    --format) _kolvane_words text csv json ;;
    --answers) _kolvane_words always queries ;;
    --transcript-times) _kolvane_words all none ;;
    --log | --template | --transcript) _kolvane_files '' ;;
    --repeat) [[ $command != decode ]] || _kolvane_words all ;;
    --timeout | --count | --every | --fields | --offset) ;;
    *) return 1 ;;
  esac
}

# Readline treats what follows the last : or = as the word, so the part before is omitted.
_kolvane_trim() {
  local head=${cur%"${cur##*[:=]}"} i
  [[ $COMP_WORDBREAKS == *:* && $head == *: || $COMP_WORDBREAKS == *=* && $head == *= ]] || return 0
  for i in "${!COMPREPLY[@]}"; do COMPREPLY[i]=${COMPREPLY[i]#"$head"}; done
}

_kolvane() {
  local window='--mode --demo --folder --help --version run send shell check ports dump decode help'
  local run='--connect --baud --parity --data-bits --stop-bits --timeout --send-terminator --receive-terminator
    --receive-mode --count --binary --show-commands --show-times --format --fields --repeat --every --transcript
    --transcript-times --log --verbose --folder
    --answers --flush --blocks --no-device-words --reconnect --utf8 --no-errors --timestamps'
  local line=${COMP_LINE:0:COMP_POINT} words cur program command='' i
  read -ra words <<<"$line"
  [[ $line == *[[:space:]] ]] && words+=('')
  cur=${words[-1]} program=${words[0]/#\~/$HOME}
  COMPREPLY=()

  for ((i = 1; i < ${#words[@]} - 1; i++)); do
    case ${words[i]} in
      --mode | --folder) ((i++)) ;;
      run | send | shell | check | ports | dump | decode | help) command=${words[i]}; break ;;
    esac
  done

  local option=${words[-2]} before=''
  if [[ $cur == --*=* ]]; then
    option=${cur%%=*} before=$option= cur=${cur#*=}
  fi
  if _kolvane_values "$option"; then
    for i in "${!COMPREPLY[@]}"; do COMPREPLY[i]=$before${COMPREPLY[i]}; done
    cur=$before$cur
  elif [[ $command == check || $command == run && $cur != -* ]]; then
    _kolvane_files .cmd
  elif [[ $command == run || $command == send && $cur == -* ]]; then
    _kolvane_words $run
  elif [[ $command == shell ]]; then
    for i in $run; do [[ $i == --repeat || $i == --every ]] || _kolvane_words "$i"; done
  elif [[ $command == decode && $cur == -* ]]; then
    _kolvane_words --template --offset --motorola --repeat --format
  elif [[ $command == dump || $command == decode ]]; then
    _kolvane_files ''
  elif [[ -z $command ]]; then
    _kolvane_words $window
    [[ -z $cur || $cur == -* ]] || _kolvane_files .cmd
  fi
  [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *:: ]] && compopt -o nospace 2>/dev/null
  _kolvane_trim
  return 0
}

complete -F _kolvane kolvane
