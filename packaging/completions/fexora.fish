# fish completion for fexora: commands, options, settings, and currencies with their names.

set -l settings fraction mode seporate namingInWidget numberOfCurrenciesInWidget todayCurrencies \
    todayConversionMode todayRelativeCurrency ratesFrom todayTrend

# The operands before the word at the cursor.
function __fexora_operands
    set -l words (commandline -opc)
    set -e words[1]
    set -l skip 0
    for word in $words
        if test $skip = 1
            set skip 0
        else if contains -- $word --container --locale --lang --limit --exclude --from --count --refresh \
                --add --remove --on --before --at-most --source --since --until --history
            set skip 1
        else if not string match -q -- '--*' $word
            echo -- $word
        end
    end
end

# The command is one of the arguments (convert: none of its own).
function __fexora_is
    set -l first (__fexora_operands)[1]
    contains -- "$first" select settings search refresh history watch status
    or set first convert
    contains -- $first $argv
end

function __fexora_has_operands
    test (count (__fexora_operands)) = $argv[1]
end

# Code and name of what the search finds; the stored selection where nothing has been typed.
function __fexora_currencies
    set -l program (commandline -opc)[1]
    set -l word (commandline -ct)
    if test -z "$word"
        $program select 2>/dev/null
    else
        $program search --plain -- $word 2>/dev/null | string replace -r ' +' '\t'
    end
end

complete -c fexora -f
complete -c fexora -n '__fexora_has_operands 0' -a select -d 'Show or change the stored selection'
complete -c fexora -n '__fexora_has_operands 0' -a settings -d 'Show the settings, or set one'
complete -c fexora -n '__fexora_has_operands 0' -a search -d 'Find currencies by code or name'
complete -c fexora -n '__fexora_has_operands 0' -a refresh -d 'Load fresh rates from the service'
complete -c fexora -n '__fexora_has_operands 0' -a history -d 'Show how a rate moved'
complete -c fexora -n '__fexora_has_operands 0' -a watch -d 'Show each change to the store'
complete -c fexora -n '__fexora_has_operands 0' -a status -d 'Show what the store holds'

complete -c fexora -n '__fexora_is convert; and not __fexora_has_operands 0' -a '(__fexora_currencies)'
complete -c fexora -n '__fexora_is history; and not __fexora_has_operands 0' -a '(__fexora_currencies)'
complete -c fexora -n '__fexora_is select' -a '(__fexora_currencies)'

complete -c fexora -n '__fexora_is settings; and __fexora_has_operands 1' -a "$settings"
complete -c fexora -n '__fexora_is settings; and contains -- mode (__fexora_operands)' -a 'light dark'
complete -c fexora -n '__fexora_is settings; and contains -- ratesFrom (__fexora_operands)' \
    -a 'automatic exchange-api ecb service nowhere'
complete -c fexora -n '__fexora_is settings; and contains -- seporate (__fexora_operands)' \
    -a 'true false'
complete -c fexora -n '__fexora_is settings; and contains -- todayTrend (__fexora_operands)' \
    -a 'true false'
complete -c fexora -n '__fexora_is settings; and contains -- namingInWidget (__fexora_operands)' \
    -a 'names codes'
complete -c fexora \
    -n '__fexora_is settings; and contains -- todayConversionMode (__fexora_operands)' \
    -a 'linear rate'
complete -c fexora \
    -n '__fexora_is settings; and string match -q "today*Curren*" (__fexora_operands)' \
    -a '(__fexora_currencies)'

complete -c fexora -l container -d 'Folder of the store' -xa '(__fish_complete_directories)'
complete -c fexora -l locale -d 'Locale of numbers, like de_DE' -x
complete -c fexora -l lang -d 'Language of names, like ja' -x
complete -c fexora -l json -d 'Print JSON'
complete -c fexora -l verbose -d 'Show the log on standard error'
complete -c fexora -l version -d 'Print the version'
complete -c fexora -l help -d 'Print the help'
complete -c fexora -n '__fexora_is convert' -l invert -d 'Divide by the rates'
complete -c fexora -n '__fexora_is convert' -l no-save -d 'Do not record the amount'
complete -c fexora -n '__fexora_is convert' -l rounded -d 'Round to the minor unit'
complete -c fexora -n '__fexora_is convert' -l plain -d 'Print the numbers alone'
complete -c fexora -n '__fexora_is convert' -l names -d 'Show names beside the codes'
complete -c fexora -n '__fexora_is select' -l add -d 'Put this currency at the end' \
    -xa '(__fexora_currencies)'
complete -c fexora -n '__fexora_is select' -l remove -d 'Take this currency out' \
    -xa '(__fexora_currencies)'
complete -c fexora -n '__fexora_is search' -l limit -d 'How many at most' -x
complete -c fexora -n '__fexora_is search' -l plain -d 'By code and name only'
complete -c fexora -n '__fexora_is search' -l exclude -d 'Leave this currency out' \
    -xa '(__fexora_currencies)'
complete -c fexora -n '__fexora_is refresh' -l from -d 'A source, a file or an address of rates' -rF \
    -a 'ecb exchange-api service'
complete -c fexora -n '__fexora_is refresh' -l force -d 'Take rates that look wrong, too'
complete -c fexora -n '__fexora_is refresh' -l history -d 'Keep past days from here' -rF
complete -c fexora -n '__fexora_is convert' -l on -d 'By the rates of that day' -x
complete -c fexora -n '__fexora_is convert' -l before -d 'By the newest rates before that day' -x
complete -c fexora -n '__fexora_is convert' -l at-most -d 'How many days older they may be' -x
complete -c fexora -n '__fexora_is convert history' -l source -d 'Of this source alone' \
    -xa 'ecb usd bundled'
complete -c fexora -n '__fexora_is history' -l since -d 'The first day' -x
complete -c fexora -n '__fexora_is history' -l until -d 'The last day' -x
complete -c fexora -n '__fexora_is history' -l plot -d 'Draw it'
complete -c fexora -n '__fexora_is history' -l csv -d 'Print lines with commas'
complete -c fexora -n '__fexora_is watch' -l count -d 'End after so many changes' -x
complete -c fexora -n '__fexora_is watch' -l refresh -d 'Load fresh rates this often' -x
