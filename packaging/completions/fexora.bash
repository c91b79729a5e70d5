# bash completion for fexora: commands, options, settings, and currencies by code or name.

# Codes for a word: what the search finds, those that begin like the word first; the stored
# selection where nothing has been typed yet.
_fexora_currencies() {
  local program=$1 word=$2 codes
  if [[ -z $word ]]; then
    codes=$("$program" select 2>/dev/null)
  else
    codes=$("$program" search --plain -- "$word" 2>/dev/null | cut -d ' ' -f 1)
  fi
  COMPREPLY=($(compgen -W "$codes" -- "${word^^}"))
  [[ ${#COMPREPLY[@]} -gt 0 ]] || COMPREPLY=($codes)
}

# Names may hold blanks, which readline then quotes.
_fexora_paths() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen "$1" -- "$2")
}

_fexora() {
  local program=$1 word=$2 command="" operands=0 i
  local commands="select settings search refresh history watch status"
  local options="--container --locale --lang --json --verbose --version --help"
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --container | --locale | --lang | --limit | --exclude | --from | --count | --refresh | --add | --remove | \
        --on | --before | --at-most | --source | --since | --until | --history)
        ((i++)) ;;
      --*) ;;
      *)
        [[ $operands -gt 0 ]] || command=${COMP_WORDS[i]}
        ((operands++))
        ;;
    esac
  done
  [[ " $commands " == *" $command "* ]] || command=${command:+convert}

  case ${COMP_WORDS[COMP_CWORD - 1]} in
    --container) _fexora_paths -d "$word" && return ;;
    --from)
      _fexora_paths -f "$word"
      COMPREPLY+=($(compgen -W "ecb exchange-api service" -- "$word"))
      return
      ;;
    --history)
      _fexora_paths -f "$word"
      COMPREPLY+=($(compgen -W "ecb ecb-90" -- "$word"))
      return
      ;;
    --source) COMPREPLY=($(compgen -W "ecb usd bundled" -- "$word")) && return ;;
    --exclude | --add | --remove) _fexora_currencies "$program" "$word" && return ;;
    --locale | --lang | --limit | --count | --refresh | --on | --before | --at-most | --since | --until) return ;;
  esac
  if [[ $word == --* ]]; then
    case $command in
      "" | convert) options+=" --invert --no-save --rounded --plain --names --on --before --at-most --source" ;;
      select) options+=" --add --remove" ;;
      search) options+=" --limit --exclude --plain" ;;
      refresh) options+=" --from --force --history" ;;
      history) options+=" --since --until --source --plot --csv" ;;
      watch) options+=" --count --refresh" ;;
    esac
    COMPREPLY=($(compgen -W "$options" -- "$word"))
    return
  fi
  case $command:$operands in
    :0) COMPREPLY=($(compgen -W "$commands" -- "$word")) ;;
    convert:* | select:* | history:* | settings:2) _fexora_values "$program" "$word" "$command" ;;
    settings:1)
      COMPREPLY=($(compgen -W "fraction mode seporate namingInWidget numberOfCurrenciesInWidget
        todayCurrencies todayConversionMode todayRelativeCurrency ratesFrom todayTrend" -- "$word"))
      ;;
  esac
}

# Currencies, but for settings with values of their own.
_fexora_values() {
  local program=$1 word=$2 values
  case $3:${COMP_WORDS[COMP_CWORD - 1]} in
    settings:mode) values="light dark" ;;
    settings:seporate | settings:todayTrend) values="true false" ;;
    settings:namingInWidget) values="names codes" ;;
    settings:todayConversionMode) values="linear rate" ;;
    settings:ratesFrom) values="automatic exchange-api ecb service nowhere" ;;
    settings:fraction | settings:numberOfCurrenciesInWidget) return ;;
    *) _fexora_currencies "$program" "$word" && return ;;
  esac
  COMPREPLY=($(compgen -W "$values" -- "$word"))
}

complete -F _fexora fexora
