# Completion of kolvane for fish.

# The resources that are available now, as listed by `kolvane ports`, and the forms that contain an address.
function __kolvane_resources
    printf '%s\n' TCPIP:: ASRL1::INSTR ASRL2::INSTR USB:: GPIB0:: LPT1 LPT2 OFFLINE
    set -l program (commandline -opc)[1]
    type -q $program; and $program ports 2>/dev/null | string replace -r '\s.*' '' | string match -v -r '^-$|ADDRESS'
end

complete -c kolvane -f

set -l window 'not __fish_seen_subcommand_from run send shell check ports dump decode help'
complete -c kolvane -n "$window; and string length -q -- (commandline -ct)" -k -a '(__fish_complete_suffix .CMD; __fish_complete_suffix .cmd)' -d 'Command list'
complete -c kolvane -n $window -a run -d 'Execute a command list'
complete -c kolvane -n $window -a send -d 'Send commands'
complete -c kolvane -n $window -a shell -d 'Start an interactive shell'
complete -c kolvane -n $window -a check -d 'Check command lists'
complete -c kolvane -n $window -a ports -d 'List the available ports'
complete -c kolvane -n $window -a dump -d 'Print a hex dump'
complete -c kolvane -n $window -a decode -d 'Print the fields of a template'
complete -c kolvane -n $window -a help -d 'Print a summary'
complete -c kolvane -n $window -l mode -x -a 2 -d 'Operating mode'
complete -c kolvane -n $window -l demo -d 'Window connected to a simulated amplifier'
complete -c kolvane -n $window -s h -l help -d Help
complete -c kolvane -n $window -l version -d Version
complete -c kolvane -l folder -x -a '(__fish_complete_directories)' -d 'Folder of histories, templates and help files'

set -l run '__fish_seen_subcommand_from run send shell'
complete -c kolvane -n '__fish_seen_subcommand_from run check' -k -a '(__fish_complete_suffix .CMD; __fish_complete_suffix .cmd)'
complete -c kolvane -n $run -l connect -x -a '(__kolvane_resources)' -d 'Resource to connect to'
complete -c kolvane -n $run -l baud -x -a '300 600 1200 2400 4800 9600 19200 38400 57600 115200' -d 'Rate of a serial line'
complete -c kolvane -n $run -l parity -x -a 'none even odd' -d 'Parity of a serial line'
complete -c kolvane -n $run -l data-bits -x -a '7 8' -d 'Data bits of a serial line'
complete -c kolvane -n $run -l stop-bits -x -a '1 2' -d 'Stop bits of a serial line'
complete -c kolvane -n $run -l timeout -x -d 'Time-out for connecting and for each answer, in milliseconds'
complete -c kolvane -n $run -l send-terminator -x -a 'LF CR CRLF NONE' -d 'Terminator of commands'
complete -c kolvane -n $run -l receive-terminator -x -a 'LF CR CRLF NONE' -d 'Terminator of answers'
complete -c kolvane -n $run -l receive-mode -x -a 'terminator auto count' -d 'How the end of an answer is recognized'
complete -c kolvane -n $run -l count -x -d 'Bytes of an answer'
complete -c kolvane -n $run -l binary -d 'Show answers as bytes'
complete -c kolvane -n $run -l show-commands -d 'Also print the commands'
complete -c kolvane -n $run -l show-times -d 'Print the time of each exchange'
complete -c kolvane -n $run -l format -x -a 'text csv json' -d 'Output format'
complete -c kolvane -n $run -l fields -x -d 'Only numeric answers, in so many columns'
complete -c kolvane -n $run -l repeat -x -d 'Number of passes'
complete -c kolvane -n $run -l every -x -d 'Start again every so many milliseconds'
complete -c kolvane -n $run -l transcript -r -F -d 'Append all sent and received bytes to a file'
complete -c kolvane -n $run -l transcript-times -x -a 'all none' -d 'Whether its lines have times'
complete -c kolvane -n $run -l log -r -F -d 'Append each line to a file'
complete -c kolvane -n $run -l verbose -d 'Report connecting and disconnecting'
complete -c kolvane -n $run -x -l answers -a 'always queries' -d 'Commands after which an answer is read'
complete -c kolvane -n $run -l flush -d 'Discard received bytes before each command'
complete -c kolvane -n $run -l blocks -d 'Read blocks as one answer'
complete -c kolvane -n $run -l no-device-words -d 'DCL, RES and STP do not end an exchange'
complete -c kolvane -n $run -l reconnect -d 'Connect again after a lost connection'
complete -c kolvane -n $run -l utf8 -d 'The instrument uses UTF-8'
complete -c kolvane -n $run -l no-errors -d 'Failed answers on standard error only'
complete -c kolvane -n $run -l timestamps -d 'Start each line with its time'

complete -c kolvane -n '__fish_seen_subcommand_from dump decode' -F
set -l decode '__fish_seen_subcommand_from decode'
complete -c kolvane -n $decode -l template -r -F -d 'Format template'
complete -c kolvane -n $decode -l offset -x -d 'Start at this byte'
complete -c kolvane -n $decode -l motorola -d 'High byte first'
complete -c kolvane -n $decode -l repeat -x -a all -d 'Number of records'
complete -c kolvane -n $decode -l format -x -a 'text csv json' -d 'Output format'
