#!/usr/bin/env bash
# Checks the shell completions: completions.sh PROGRAM FOLDER. Each must know every long option of PROGRAM --help;
# bash's and fish's are asked for completions, zsh's is parsed.
set -uo pipefail
export LC_ALL=C
program=$(readlink -f "$1") folder=$(readlink -f "$2")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
mkdir listen
touch nacht.CMD tag.cmd bild.png
printf '#!/bin/sh\nprintf "ASRL1::INSTR serial\nASRL/dev/ttyUSB7::INSTR serial\\nUSB::\\$(id)::INSTR odd\\nUSB::4711\\ttab\\n-  /dev/x none\\nGPIB0::ADDRESS::INSTR board\\n"\n' >kolvane
chmod +x kolvane

status=0
# same WHAT EXPECTED GOT
same() {
  [ "$2" = "$3" ] && return 0
  printf '%s\n  expected: %s\n  got:      %s\n' "$1" "$2" "$3"
  status=1
}

# Every option that the program knows is completed.
for option in $("$program" --help | grep -oE -- '--[a-z][a-z0-9-]+' | sort -u); do
  grep -qE -- "(^|[^a-z-])$option([^a-z0-9-]|$)" "$folder/kolvane.bash" || same bash "$option" nothing
  grep -qE -- "(\(- \*\)'\{-h,$option\}'|'(\(- \*\))?$option)\[" "$folder/_kolvane" || same zsh "$option" nothing
  grep -qE -- " -l ${option#--} " "$folder/kolvane.fish" || same fish "$option" nothing
done

zsh -n "$folder/_kolvane" || status=1

. "$folder/kolvane.bash"
# bash_completes LINE WORD...: the completions for LINE with the cursor at its end.
bash_completes() {
  COMP_LINE=$1 COMP_POINT=${#1}
  shift
  _kolvane
  same "bash: $COMP_LINE" "$*" "${COMPREPLY[*]-}"
}
bash_completes './kolvane --d' --demo
bash_completes './kolvane ' --mode --demo --folder --help --version run send shell check ports dump decode help
bash_completes './kolvane n' nacht.CMD
bash_completes './kolvane --folder s' # no such folder
bash_completes './kolvane --mode ' 2
bash_completes './kolvane run ' listen nacht.CMD tag.cmd
bash_completes './kolvane run --par' --parity
bash_completes './kolvane run nacht.CMD --parity ' none even odd
bash_completes './kolvane run --parity=e' even
bash_completes './kolvane --folder run send --re' --receive-terminator --receive-mode --repeat --reconnect
bash_completes './kolvane check ' listen nacht.CMD tag.cmd
bash_completes './kolvane check nacht.CMD t' tag.cmd
bash_completes './kolvane send *IDN? ' ''
bash_completes './kolvane send --connect AS' ASRL1::INSTR ASRL2::INSTR ASRL/dev/ttyUSB7::INSTR
bash_completes './kolvane send --connect ASRL1::' INSTR
bash_completes './kolvane send X --repeat ' ''
bash_completes './kolvane decode x.bin --repeat ' all
bash_completes './kolvane shell --re' --receive-terminator --receive-mode --reconnect
bash_completes './kolvane help ' ''
bash_completes './kolvane send --connect=ASRL/dev/ttyUSB7:' :INSTR
bash_completes './kolvane send --connect USB::' '' 4711
bash_completes './kolvane send --connect GPIB' GPIB0::
bash_completes './kolvane send --connect -'
bash_completes './kolvane send --log b' bild.png
bash_completes './kolvane send --transcript b' bild.png
bash_completes './kolvane send --transcript-times ' all none
bash_completes './kolvane send --answers ' always queries
bash_completes './kolvane run --answers=q' queries
bash_completes './kolvane ports --' ''

# fish_completes LINE WORD...: the same for fish, without the descriptions
fish_completes() {
  local got
  got=$(fish --no-config -c "source $folder/kolvane.fish; complete -C '$1'" | cut -f 1 | sort | paste -sd ' ')
  same "fish: $1" "${*:2}" "$got"
}
export HOME=$scratch PATH=$scratch:$PATH
fish_completes 'kolvane ' check decode dump help ports run send shell
fish_completes 'kolvane nac' nacht.CMD
fish_completes 'kolvane --mode ' 2
fish_completes 'kolvane --d' --demo
fish_completes 'kolvane run nacht.CMD --par' --parity
fish_completes 'kolvane run --parity ' even none odd
fish_completes 'kolvane run na' nacht.CMD
fish_completes 'kolvane run --answers ' always queries
fish_completes 'kolvane check na' nacht.CMD
fish_completes 'kolvane send --connect ASRL/' ASRL/dev/ttyUSB7::INSTR
fish_completes 'kolvane send --connect ASRL1' ASRL1::INSTR
fish_completes 'kolvane send --connect GPIB' GPIB0::
exit "$status"
