# Completion of starsift, starseek and starport for bash.

# _starsift_files ENDING...: folders, and files with one of the endings.
_starsift_files() {
  local ending
  COMPREPLY=()
  for ending in "$@"; do
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -X "!*.$ending" -- "$word")
  done
  mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -d -- "$word")
  compopt -o filenames 2>/dev/null
}

_starsift() {
  local word=${COMP_WORDS[COMP_CWORD]}
  _starsift_files sol
}

_starseek() {
  local word=${COMP_WORDS[COMP_CWORD]}
  case $word in
    -*)
      mapfile -t COMPREPLY < <(compgen -W "--help=1 --sol= --iters= --rtime= --tnorm= --snorm= --verb=
        --deep=1 --prove --prove=0 --count --threads= --part= --join --profile= --json --version" -- "$word")
      compopt -o nospace 2>/dev/null
      ;;
    *) _starsift_files opt ;;
  esac
}

_starport() {
  local word=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
  # The shell divides --for=cbc at the "=".
  if [ "$word" = = ]; then
    word=
  elif [ "$option" = = ]; then
    option=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  case $word in
    -*)
      mapfile -t COMPREPLY < <(compgen -W "-o --solution --format --force --repair --decimals --constant
        --max-size --infinity --integer-upper --integrality --snap --keep-rounded --explain --rows
        --json --solution-of --record --for --help --version" -- "$word")
      ;;
    *)
      COMPREPLY=()
      case $option in
        --for) mapfile -t COMPREPLY < <(compgen -W "miplib cbc" -- "$word") ;;
        --record) mapfile -t COMPREPLY < <(compgen -W "all" -- "$word") ;;
        --format) mapfile -t COMPREPLY < <(compgen -W "mps lp opb" -- "$word") ;;
        --solution | -o)
          mapfile -t COMPREPLY < <(compgen -f -- "$word")
          compopt -o filenames 2>/dev/null
          ;;
        *) _starsift_files mps mps.gz lp lp.gz opb opb.gz opt sol ;;
      esac
      ;;
  esac
}

complete -F _starsift starsift
complete -F _starseek starseek
complete -F _starport starport
