#!/bin/sh
# Tests of adapters/xboard/winboard.exe with programs that stand in for XBoard and Xvfb. Needs no
# display. Usage: adapter_test.sh [PATH OF winboard.exe]

set -u
here=$(cd "$(dirname "$0")" && pwd)
adapter=${1:-$here/../../adapters/xboard/winboard.exe}
adapter=$(cd "$(dirname "$adapter")" && pwd)/$(basename "$adapter")
root=$(mktemp -d)
trap 'end_servers; rm -rf "$root"' EXIT
passed=0
failed=0

# --- Tools ----------------------------------------------------------------------------------------

# The displays that games share stay for a while after the last one.
end_servers() {
  cat "$root"/*/servers 2>/dev/null | while read -r server; do kill "$server" 2>/dev/null; done
}

# Makes an empty directory for one case; everything that the case writes lies below it, temporary
# files too.
begin() { # NAME
  reopen "$1"
  mkdir -p "$FAKE/game" "$FAKE/tmp"
  : >"$FAKE/pids"
  cd "$FAKE/game" || exit 1
  xboard="$here/fake_xboard"
  xvfb="$here/fake_xvfb"
  xboard_mode=plays
  xvfb_mode=works
  display=:7
}

# Goes back to a case that was begun before.
reopen() { # NAME
  FAKE="$root/$1"
}

# Becomes the adapter, so that in a background job a signal reaches the adapter itself.
become_adapter() { # WORDS OF WINBOARD'S COMMAND LINE
  export FAKE FAKE_MODE="$xboard_mode" FAKE_XVFB="$xvfb_mode"
  export XBOARD="$xboard" XVFB="$xvfb" TMPDIR="$FAKE/tmp" DISPLAY="$display"
  exec "$adapter" "$@" 2>"$FAKE/errors" </dev/null
}

run() {
  (become_adapter "$@")
  status=$?
}

start() {
  (become_adapter "$@") &
  started=$!
}

# Waits until the stand-in has said that it runs; gives up after ten seconds.
await_start() {
  tries=0
  until [ -e "$FAKE/started" ] || [ "$tries" -eq 200 ]; do
    tries=$((tries + 1))
    sleep 0.05
  done
}

ok() { # WHAT
  passed=$((passed + 1))
  [ -z "${VERBOSE:-}" ] || echo "ok: $1"
}

not_ok() { # WHAT MORE
  failed=$((failed + 1))
  printf 'FAILED: %s\n%s\n' "$1" "$2"
}

equal() { # WHAT EXPECTED ACTUAL
  if [ "$2" = "$3" ]; then ok "$1"; else not_ok "$1" "  expected: $2
  got:      $3"; fi
}

# The words after those that the adapter adds, on one line, each in brackets.
words() {
  sed '1,/^-xanimate$/d' "$FAKE/words" | sed 's/.*/[&]/' | tr -d '\n'
}

gives() { # WHAT EXPECTED
  equal "$1" "$2" "$(words)"
}

# The value with which XBoard ends up: the last one counts.
last_value() { # NAME
  awk -v name="$1" 'taken { value = $0; taken = 0 } $0 == name { taken = 1 } END { print value }' "$FAKE/words"
}

says() { # WHAT TEXT
  if grep -qF -- "$2" "$FAKE/errors"; then ok "$1"; else not_ok "$1" "  standard error: $(cat "$FAKE/errors")"; fi
}

says_nothing() { # WHAT
  equal "$1" '' "$(cat "$FAKE/errors")"
}

# The game's error file tells what standard error tells, and that is something.
is_noted() { # WHAT [FILE]
  equal "$1" "$(cat "$FAKE/errors")" "$(cat "$FAKE/game/${2:-g7.err}" 2>&1)"
  if [ -s "$FAKE/errors" ]; then ok "$1"; else not_ok "$1" '  nothing was said'; fi
}

is_not_noted() { # WHAT [FILE]
  equal "$1" '' "$(ls "$FAKE/game/${2:-g7.err}" 2>/dev/null)"
}

is_running() { # PID
  { read -r stat <"/proc/$1/stat"; } 2>/dev/null || return 1
  case ${stat##*) } in
  [ZX]*) return 1 ;;
  esac
}

# A process that was killed is there for a moment.
await_end() { # PID
  tries=0
  while is_running "$1"; do
    [ "$tries" -lt 20 ] || return 1
    tries=$((tries + 1))
    sleep 0.05
  done
}

is_clean() { # WHAT
  alive=''
  while read -r pid; do
    await_end "$pid" || alive="$alive $pid"
  done <"$FAKE/pids"
  equal "$1: no process is left" '' "$alive"
  equal "$1: no temporary file is left" '' "$(ls -A "$FAKE/tmp")"
}

make_program() { # FILE
  mkdir -p "$(dirname "$1")"
  printf '#!/bin/sh\n' >"$1"
  chmod +x "$1"
}

# --- Games that do not end by themselves: they take seconds, so they run beside all the others ----

begin 'thinks'
xboard_mode=thinks
start /debug
thinks=$started

begin 'misses_engine'
xboard_mode=misses_engine
display=''
start /debug /sgf=g7.PGN
misses_engine=$started

begin 'stays_after_game'
xboard_mode=stays_after_game
start /debug
stays_after_game=$started

begin 'leaves_engine'
xboard_mode=leaves_engine
start /debug
leaves_engine=$started

begin 'will_not_go'
xboard_mode=will_not_go
start /debug
will_not_go=$started
await_start
kill -TERM "$will_not_go"

# --- Options --------------------------------------------------------------------------------------

begin 'batch_file'
run /xponder /cp /mg 1 '/sgf=/tmp/t\g7.PGN' /tc 5:30 /inc -1 /mps 40 /clock /thinking /xlegal /fd=/usr/games \
  /fcp=alpha '/scp=beta --xboard' /debug /xexit /xpopup /autoflag
gives "the batch file's command becomes XBoard's" \
  '[-xponder][-cp][-mg][1][-sgf][/tmp/t/g7.PGN][-tc][5:30][-inc][-1][-mps][40][-clock][-thinking][-xlegal][-fd][/usr/games][-fcp][alpha][-scp][beta --xboard][-debug][-xexit][-xpopup][-autoflag]'
equal 'a played game ends well' 0 "$status"
says_nothing 'a played game says nothing'
equal 'a display that is there is used' ':7' "$(cat "$FAKE/displays")"
is_clean 'a played game'

begin 'forms'
run /fUCI /sUCI /firstHost=h1 -secondHost h2 /animateMoving=false /popup -xpopup /timeDelay -1 '/firstOptions=Hash=16,Style=a b' \
  /secondOptions= -fd /tmp /sd '/my engines' -fcp /usr/games/alpha /scp /opt /st 0:05 -mg 1
gives 'every form of an option is understood' \
  '[-fUCI][-sUCI][-firstHost][h1][-secondHost][h2][-animateMoving][false][-popup][-xpopup][-timeDelay][-1][-firstOptions][Hash=16,Style=a b][-secondOptions][][-fd][/tmp][-sd][/my engines][-fcp][/usr/games/alpha][-scp][/opt][-st][0:05][-mg][1]'

begin 'unknown'
run stray /usr/games/alpha /cp word
gives 'a word that is no option is left to XBoard to refuse' '[stray][/usr/games/alpha][-cp][word]'

begin 'backslashes'
run '/sgf=t\my games\g1.PGN' '/fd=c\my engines' '/fcp=sub\alpha' '/scp=sub\beta -o a\b' '/firstOptions=a\b'
gives 'a backslash is a slash in file names only' \
  '[-sgf][t/my games/g1.PGN][-fd][c/my engines][-fcp][sub/alpha][-scp][sub/beta -o a\b][-firstOptions][a\b]'

begin 'shell_characters'
# shellcheck disable=SC2016
run '/fd=$(touch x)' '/fcp=`touch x` ;touch x' '/scp=a;touch${IFS}x' '/firstOptions=*' '/secondOptions=|&>x <x' \
  '/sgf=$HOME*?[a]' '/pgnEventHeader=50% %s %d'
# shellcheck disable=SC2016
gives 'shell characters are letters like any other' \
  '[-fd][$(touch x)][-fcp][`touch x` ;touch x][-scp][a;touch${IFS}x][-firstOptions][*][-secondOptions][|&>x <x][-sgf][$HOME*?[a]][-pgnEventHeader][50% %s %d]'
equal 'nothing in a name is run' '' "$(ls -A)"

begin 'debugfile'
run '/debugfile=t\my games\winboard.debug'
gives "the option for the debug file's name takes a path" '[-debugfile][t/my games/winboard.debug]'
run '/debugFile=t\winboard.debug'
gives 'written in another way it is left to XBoard to refuse' '[-debugFile][t\winboard.debug]'

begin 'braces'
run '/firstOptions=a}b' '/secondOptions=a }b' '/pgnEventHeader="quoted \ text"' '/userName={x}'
gives "what XBoard's own word splitting would spoil is protected" \
  '[-firstOptions][a}b][-secondOptions]["a\040}b"][-pgnEventHeader][{"quoted \ text"}][-userName]["{x}"]'

# --- Engines --------------------------------------------------------------------------------------

begin 'engines'
make_program "$FAKE/game/my engines/alpha"
make_program "$FAKE/game/my engines/big engine"
make_program "$FAKE/game/my engines/it's big"
run '/fd=my engines' /fcp=alpha '/sd=my engines' '/scp=big engine'
gives "an engine in its own directory is found there, with a blank in its name too" \
  "[-fd][my engines][-fcp][./alpha][-sd][my engines][-scp][{'./big engine'}]"
run '/fd=my engines' '/fcp="big engine" -x 1' '/sd=my engines' '/scp=alpha "big engine"'
gives "a quoted program keeps its arguments" \
  "[-fd][my engines][-fcp][{'./big engine' -x 1}][-sd][my engines][-scp][./alpha \"big engine\"]"
run "/fcp=my engines\\it's big -x" /scp=sh
gives "a path with blanks and quotes works without a directory" \
  "[-fcp][{\"my engines/it's big\" -x}][-scp][sh]"

begin 'fairymax'
run /fcp=fairymax '/scp=/usr/games/shamax x'
equal 'Fairy-Max is spared the word that makes it crash' '-secondComputerString||-firstComputerString||' \
  "$(sed -n '/ComputerString/,+1p' "$FAKE/words" | tr '\n' '|')"
run /secondComputerString=computer /fcp=alpha /scp=fairymax
equal 'the user may want that word all the same' 'computer' "$(last_value -secondComputerString)"
equal 'other engines are told everything' '' "$(grep firstComputerString "$FAKE/words")"

# --- What is added --------------------------------------------------------------------------------

begin 'additions'
run /cp
equal 'the debug file has the name that is waited for' 'winboard.debug' "$(last_value -nameOfDebugFile)"
equal 'no sound player is called' 'true' "$(last_value -soundProgram)"
equal "the user's settings are not rewritten" 'false' "$(last_value -saveSettingsOnExit)"
equal "and if they were, they would go nowhere" '/dev/null' "$(last_value -saveSettingsFile)"
run /nameOfDebugFile=mine.debug /soundProgram=play -saveSettingsOnExit true '/saveSettingsFile=a\b' /animate
equal "the user's debug file wins" 'mine.debug' "$(last_value -nameOfDebugFile)"
equal "the user's sound player wins" 'play' "$(last_value -soundProgram)"
equal "the user's word on settings wins" 'true' "$(last_value -saveSettingsOnExit)"
equal "the user's settings file wins" 'a/b' "$(last_value -saveSettingsFile)"
equal "the user's animation wins" '-animate' "$(tail -n 1 "$FAKE/words")"

# --- Viewing --------------------------------------------------------------------------------------

begin 'view'
view_words() { sed '1,/^-saveSettingsOnExit$/d' "$FAKE/words" | sed '1d; s/.*/[&]/' | tr -d '\n'; }
run /ncp /td 0 '/tmp/my games\all.pgn'
equal 'a game file is shown' '[-ncp][-td][0][-lgf][/tmp/my games/all.pgn]' "$(view_words)"
run /ncp /td 0
equal 'a board is shown without a file' '[-ncp][-td][0]' "$(view_words)"
run /ncp all.pgn
equal 'a file may follow directly' '[-ncp][-lgf][all.pgn]' "$(view_words)"

begin 'view_without_display'
display=''
run /ncp /td 0 /sgf=g7.PGN all.pgn
equal 'nothing can be shown without a display' 1 "$status"
says 'that is said' 'there is no display to show the games on'
is_not_noted 'that is no matter of a game'
equal 'and XBoard is not started' '' "$(cat "$FAKE/pids")"
is_clean 'viewing without a display'

# --- Failures and displays ------------------------------------------------------------------------

begin 'missing_xboard'
xboard="$root/no/xboard"
run /cp /sgf=g7.PGN
equal 'a missing XBoard gives 127' 127 "$status"
is_noted 'a missing XBoard is noted'
says 'a missing XBoard is named' "cannot find the program '$root/no/xboard'"
is_clean 'a missing XBoard'

begin 'missing_xvfb'
display=''
xvfb="$root/no/Xvfb"
run /cp /sgf=g7.PGN
equal 'a missing Xvfb gives 127' 127 "$status"
is_noted 'a missing Xvfb is noted'
says 'a missing Xvfb is named' "there is no display and no program '$root/no/Xvfb'"
is_clean 'a missing Xvfb'

begin 'failing_xvfb'
display=''
xvfb_mode=fails
run /cp /sgf=g7.PGN
equal 'an Xvfb that fails gives 1' 1 "$status"
is_noted 'a failing Xvfb is noted'
says 'its reason is told' 'Xvfb did not start: Fatal server error: no room for another display'
is_clean 'a failing Xvfb'

begin 'no_display'
display=''
run /cp
equal 'without a display Xvfb gives one' ':42' "$(cat "$FAKE/displays")"
equal 'and the game is played' 0 "$status"
is_clean 'a game under Xvfb'

# --- The display that all games of a directory share ----------------------------------------------

shared_server() {
  cut -d ' ' -f 2 "$FAKE/game/.xvfb"
}

begin 'shared_display'
display=''
run /cp /sgf=g7.PGN
run /cp "/sgf=$FAKE/game/g8.PGN"
equal 'the next game of the directory has the same display' ':42 :42 ' "$(tr '\n' ' ' <"$FAKE/displays")"
kill -KILL "$(shared_server)"
await_end "$(shared_server)"
run /cp /sgf=g9.PGN
equal 'when it has crashed, the next game starts another' ':42 :42 :43 ' "$(tr '\n' ' ' <"$FAKE/displays")"
equal 'which stays for those that follow' 0 "$(kill -0 "$(shared_server)"; echo $?)"
mkdir elsewhere
run /cp '/sgf=elsewhere\g1.PGN'
equal 'another directory has another display' ':44' "$(tail -n 1 "$FAKE/displays")"
echo '43 1 5' >.xvfb
run /cp /sgf=g10.PGN
equal 'a process with the number of one that ended is not taken for it' ':45' "$(tail -n 1 "$FAKE/displays")"
says_nothing 'a shared display'
is_clean 'a shared display'

begin 'shared_at_once'
display=''
first='' # the games that are started at once
for number in 1 2 3 4; do
  start /cp "/sgf=g$number.PGN"
  first="$first $started"
done
# shellcheck disable=SC2086
wait $first
equal 'games that start at once share one display' ':42 :42 :42 :42 ' "$(tr '\n' ' ' <"$FAKE/displays")"
is_clean 'games that start at once'

begin 'lost_display'
display=''
xboard_mode=loses_display
run /cp
equal 'a shared display that goes at that moment is replaced' ':42 :43 ' "$(tr '\n' ' ' <"$FAKE/displays")"
equal 'and the game is played then' 0 "$status"
is_clean 'a shared display that goes'

begin 'unseen_display'
display=''
xboard_mode=fails
run /nonsense
equal 'a shared display that nobody has seen does not stay' 0 "$(await_end "$(shared_server)"; echo $?)"

begin 'own_display'
display=''
mkdir .xvfb
run /cp
equal 'where none can be shared a game has its own' ':42' "$(cat "$FAKE/displays")"
equal 'and is played' 0 "$status"
is_clean "a game's own display"

begin 'display_of_a_job'
display=''
SLURM_JOB_NAME=tarvendo-t-1f3a9c-g7-1
export SLURM_JOB_NAME
run /cp /sgf=g7.PGN
unset SLURM_JOB_NAME
equal "a scheduler's job has a display of its own" no "$([ -e "$FAKE/game/.xvfb" ] && echo yes || echo no)"
is_clean "a display of a scheduler's job"

begin 'claim'
display=''
xboard_mode=lists_files
export adapter FAKE FAKE_MODE="$xboard_mode" FAKE_XVFB="$xvfb_mode" XBOARD="$xboard" XVFB="$xvfb" TMPDIR="$FAKE/tmp" DISPLAY=''
bash -c 'exec 70>g7.run; flock 70; exec "$adapter" /cp /sgf=g7.PGN' 2>"$FAKE/errors" </dev/null
equal 'XBoard holds the lock on its game' 1 "$(grep -c . "$FAKE/claims")"
equal 'the shared display does not' 0 "$(flock -n g7.run true; echo $?)"
equal 'though it is there' 0 "$(kill -0 "$(shared_server)"; echo $?)"

begin 'refused_display'
xboard_mode=wants_display
run /cp
equal 'a display out of reach is replaced' ':7 :42 ' "$(tr '\n' ' ' <"$FAKE/displays")"
equal 'and the game is played there' 0 "$status"
says_nothing 'a refused display is no matter'
is_clean 'a refused display'

begin 'failing_xboard'
xboard_mode=fails
run /nonsense /sgf=g7.PGN
is_noted 'an option that XBoard does not know is noted'
equal "XBoard's exit code is handed on" 2 "$status"
equal 'its reason is told, its chatter is not' 'winboard.exe: XBoard says: Unrecognized argument -nonsense' "$(cat "$FAKE/errors")"

begin 'complaining_xboard'
xboard_mode=complains
run /cp /sgf=g7.PGN
equal 'five complaints are enough' 5 "$(grep -c 'XBoard says: complaint' "$FAKE/errors")"
is_noted 'what XBoard complains about is noted'

# --- The error file -------------------------------------------------------------------------------

begin 'old_error_file'
echo 'an earlier attempt' >g7.err
run /cp '/sgf=g7.PGN'
is_not_noted 'a game that was played has no error file, and an old one goes'

begin 'collected'
: >g7.run
xboard_mode=is_collected
run /cp /sgf=g7.PGN
says 'what is found after the game was collected is said' 'XBoard says: Error writing to the engine'
is_not_noted 'but leaves no file, for nobody would delete it'

begin 'error_file_names'
xboard_mode=fails
mkdir 'my games'
run /cp '/sgf=my games\g7.pgn'
is_noted "it lies beside the game's PGN" 'my games/g7.err'
run /cp -saveGameFile g8
is_noted 'a name without an ending gets one' g8.err
run /cp '/sgf=v1.5\g9.PGN'
says 'one that cannot be written is told of' "cannot write 'v1.5/g9.err'"
says 'and the reason is told all the same' 'Unrecognized argument -nonsense'
run /cp
says 'without a PGN the reason is told' 'Unrecognized argument -nonsense'
equal 'and no other file is written' './g8.err ./my games ' "$(find . ! -name . -prune | sort | tr '\n' ' ')"

# --- Engines that do not understand ---------------------------------------------------------------

# Plays a game, in a process of its own, that has the debug file on standard input.
play_with_debug_file() { # NAME [MODE OF XBOARD]
  begin "$1"
  xboard_mode=${2:-writes_debug}
  cat >"$FAKE/debug"
  run /debug /sgf=g7.PGN '/fcp=white one' /scp=black
}
hint_about() { # ENGINE
  echo "winboard.exe: the engine '$1' lost on time before its first move and printed nothing that an xboard engine prints; a UCI engine needs /fUCI in its WhiteOptions and /sUCI in its BlackOptions"
}

# As XBoard 4.9.1 writes it of Stockfish 15.1, shortened.
white_is_uci() {
  cat <<'END'
GameEnds(0, (null), 2)
StartChildProcess (dir=".") stockfish
291 >first : xboard
protover 2
297 <first : Stockfish 15.1 by the Stockfish developers (see AUTHORS file)
436 <first : Unknown command: 'protover 2'. Type help for more information.
10301 >first : new
random
10305 <first : Unknown command: 'level 0 0:03 0'. Type help for more information.
10403 <second: feature setboard=0 xedit=1 ping=1 done=0
10457 <second: pong 1
10460 >second: 10460 >first : black
10461 <first : info depth 1 seldepth 1 multipv 1 score cp 18 nodes 20 nps 10000 hashfull 0 tbhits 0 time 2 pv e2e4
GameEnds(27, Black wins on time, 4)
Interrupting first
GameEnds(27, Black wins on time, 2)
13463 >first : quit
END
}
black_is_uci() {
  white_is_uci | sed 's/first /tmp/; s/second/first /; s/tmp/second/; s/Black wins/White wins/'
}

white_is_uci | play_with_debug_file 'uci_as_white'
reopen 'uci_as_white'
equal 'a UCI engine entered plainly is told of, once' "$(hint_about 'white one')" "$(cat "$FAKE/errors")"
is_noted 'it is noted'
is_clean 'a UCI engine entered plainly'

black_is_uci | play_with_debug_file 'uci_as_black'
reopen 'uci_as_black'
equal 'as Black too' "$(hint_about 'black')" "$(cat "$FAKE/errors")"

white_is_uci | play_with_debug_file 'uci_moved' debug_is_moved
reopen 'uci_moved'
equal 'also when its debug file has been moved away meanwhile' "$(hint_about 'white one')" "$(cat "$FAKE/errors")"

white_is_uci | play_with_debug_file 'uci_seen_early' awaits_hint
reopen 'uci_seen_early'
equal 'it is told of before XBoard has ended' "$(hint_about 'white one')" "$(cat "$FAKE/hint")"
equal 'and only once' "$(hint_about 'white one')" "$(cat "$FAKE/errors")"
is_clean 'a UCI engine that is told of early'

while IFS= read -r line; do
  white_is_uci | sed "s|^297 .*|297 <first : $line|" | play_with_debug_file 'understands'
  reopen 'understands'
  says_nothing "an engine that prints '$line' understands"
done <<'END'
feature done=1
move e2e4
1. ... e2e4
1. e4
My move is: e2e4
pong 1
9 156 1084 48000 Nf3 Nc6
  9.  -12 1084 48000 Nf3 Nc6
Error (unknown command): protover
Illegal move: e2e4
tellics say     Fairy-Max 5.0b
# a remark
END
white_is_uci | sed 's/wins on time/mates/' | play_with_debug_file 'mated'
reopen 'mated'
says_nothing 'a game that was not lost on time tells nothing of its engines'
white_is_uci | sed 's/Black wins/White wins/' | play_with_debug_file 'other_loses'
reopen 'other_loses'
says_nothing 'nor does the winner'
is_not_noted 'nothing is noted then'

# --- Ends from outside ----------------------------------------------------------------------------

# An interrupt is left out: a shell's background jobs ignore it.
is_ended_by() { # SIGNAL EXIT CODE
  begin "killed_by_$1"
  xboard_mode=plays_long
  display=''
  start /debug /sgf=g7.PGN
  await_start
  equal "$1: the game was running" 'yes' "$([ -e "$FAKE/started" ] && echo yes)"
  kill -s "$1" "$started"
  wait "$started"
  equal "$1 ends the adapter" "$2" "$?"
  says "$1 is told of" "ended from outside by $1"
  is_noted "$1 is noted"
  is_clean "$1"
}
is_ended_by TERM 143
is_ended_by HUP 129

# --- What became of the games begun first ---------------------------------------------------------

reopen 'misses_engine'
wait "$misses_engine"
equal 'a game without its engine gives 1' 1 "$?"
says 'the engine that is missing is named' 'Failed to start first chess program nosuch'
says 'and that XBoard was ended' 'XBoard would have stayed open for ever and was ended'
equal 'the debug file tells the end of the game' 'GameEnds(29, xboard exit, 2)' "$(cat "$FAKE/game/winboard.debug")"
is_noted 'a missing engine is noted'
is_clean 'a missing engine'

reopen 'stays_after_game'
wait "$stays_after_game"
equal 'an XBoard that stays after the game is ended' 1 "$?"
is_clean 'an XBoard that stays'

reopen 'leaves_engine'
wait "$leaves_engine"
equal 'an engine that stays is no matter of the game' 0 "$?"
is_clean 'an engine that stays'

reopen 'thinks'
wait "$thinks"
equal 'neither a board that was set up nor a game that was loaded ends the game' 0 "$?"
says_nothing 'a long game says nothing'
is_clean 'a long game'

reopen 'will_not_go'
wait "$will_not_go"
equal 'an XBoard that ignores its end is killed' 143 "$?"
is_clean 'an XBoard that ignores its end'

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
