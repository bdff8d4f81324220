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
# bash_gives LINE WORD...: the completions for LINE with the cursor at its end.
bash_gives() {
  COMP_LINE=$1 COMP_POINT=${#1}
  shift
  _kolvane
  same "bash: $COMP_LINE" "$*" "${COMPREPLY[*]-}"
}
bash_gives './kolvane --d' --demo
bash_gives './kolvane ' --mode --demo --folder --help --version run send shell check ports dump decode help
bash_gives './kolvane n' nacht.CMD
bash_gives './kolvane --folder s' # no such folder
bash_gives './kolvane --mode ' 2
bash_gives './kolvane run ' listen nacht.CMD tag.cmd
bash_gives './kolvane run --par' --parity
bash_gives './kolvane run nacht.CMD --parity ' none even odd
bash_gives './kolvane run --parity=e' even
bash_gives './kolvane --folder run send --re' --receive-terminator --receive-mode --repeat --reconnect
bash_gives './kolvane check ' listen nacht.CMD tag.cmd
bash_gives './kolvane check nacht.CMD t' tag.cmd
bash_gives './kolvane send *IDN? ' ''
bash_gives './kolvane send --connect AS' ASRL1::INSTR ASRL2::INSTR ASRL/dev/ttyUSB7::INSTR
bash_gives './kolvane send --connect ASRL1::' INSTR
bash_gives './kolvane send X --repeat ' ''
bash_gives './kolvane decode x.bin --repeat ' all
bash_gives './kolvane shell --re' --receive-terminator --receive-mode --reconnect
bash_gives './kolvane help ' ''
bash_gives './kolvane send --connect=ASRL/dev/ttyUSB7:' :INSTR
bash_gives './kolvane send --connect USB::' '' 4711
bash_gives './kolvane send --connect GPIB' GPIB0::
bash_gives './kolvane send --connect -'
bash_gives './kolvane send --log b' bild.png
bash_gives './kolvane send --transcript b' bild.png
bash_gives './kolvane send --transcript-times ' all none
bash_gives './kolvane ports --' ''

# fish_gives LINE WORD...: the same for fish, without the descriptions
fish_gives() {
  local got
  got=$(fish --no-config -c "source $folder/kolvane.fish; complete -C '$1'" | cut -f 1 | sort | paste -sd ' ')
  same "fish: $1" "${*:2}" "$got"
}
export HOME=$scratch PATH=$scratch:$PATH
fish_gives 'kolvane ' check decode dump help ports run send shell
fish_gives 'kolvane nac' nacht.CMD
fish_gives 'kolvane --mode ' 2
fish_gives 'kolvane --d' --demo
fish_gives 'kolvane run nacht.CMD --par' --parity
fish_gives 'kolvane run --parity ' even none odd
fish_gives 'kolvane run na' nacht.CMD
fish_gives 'kolvane check na' nacht.CMD
fish_gives 'kolvane send --connect ASRL/' ASRL/dev/ttyUSB7::INSTR
fish_gives 'kolvane send --connect ASRL1' ASRL1::INSTR
fish_gives 'kolvane send --connect GPIB' GPIB0::
exit "$status"
