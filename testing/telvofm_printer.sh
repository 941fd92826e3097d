# A virtual fiscal printer for the tests of a till, for shell scripts: source it. It needs bash, curl, and telvofm-printer
# on the path or in TELVOFM_PRINTER. docs/control.md describes what can be asked.
#
#     start_printer                             its address is $PRINTER_ADDRESS; it ends with the script
#     start_printer --token-file FILE           options are handed over; `ask` brings the token along, also that of --token
#     ask GET state                             prints what is answered; fails when it is an error
#     ask POST faults '{"kind": "paperOut"}'
#     expect '{"committed": []}'                fails with the differences on standard error
#     wait_until '{"situation": "idle"}' 5000   the same, within so many milliseconds
#
# Another start_printer starts another printer; the variables PRINTER_ADDRESS and PRINTER_CONTROL are those of the last
# one, and all of them end with the script, however it ends. A trap on EXIT of the script's own is called as well, when
# it stands in front of the first start_printer.

PRINTER_PROCESSES=()

end_printers() {
    if ((${#PRINTER_PROCESSES[@]})); then
        kill "${PRINTER_PROCESSES[@]}" 2>/dev/null
    fi
    PRINTER_PROCESSES=()
}

start_printer() {
    local folder line option before_it=''
    PRINTER_TOKEN=''
    for option in "$@"; do
        [[ $before_it != --token ]] || PRINTER_TOKEN=$option
        [[ $before_it != --token-file ]] || PRINTER_TOKEN=$(head -n 1 "$option")
        [[ $option != --token=* ]] || PRINTER_TOKEN=${option#--token=}
        before_it=$option
    done
    if ((${#PRINTER_PROCESSES[@]} == 0)); then
        PRINTER_SCRIPTS_TRAP=$(trap -p EXIT)
        trap end_with_printers EXIT
    fi
    folder=$(mktemp -d)
    mkfifo "$folder/paper"
    # The last words let it end also when the script cannot end it itself.
    "${TELVOFM_PRINTER:-telvofm-printer}" --listen 127.0.0.1:0 --control 127.0.0.1:0 "$@" --exit-with-parent \
        >"$folder/paper" 2>&1 &
    PRINTER_PROCESSES+=($!)
    exec {PRINTER_PAPER}<"$folder/paper"
    rm -r "$folder"
    PRINTER_ADDRESS='' PRINTER_CONTROL=''
    while [[ -z $PRINTER_CONTROL ]] && read -r line <&"$PRINTER_PAPER"; do
        case $line in
        "listening on "*) PRINTER_ADDRESS=${line#listening on } ;;
        "control on "*) PRINTER_CONTROL=${line#control on } ;;
        *) printf '%s\n' "$line" >&2 ;;
        esac
    done
    [[ -n $PRINTER_CONTROL ]]
}

# What `trap -p` has printed is a command: the one in front of it is called, with the status that the script ends with.
end_with_printers() {
    local status=$?
    end_printers
    if [[ -n ${PRINTER_SCRIPTS_TRAP-} ]]; then
        eval "set -- ${PRINTER_SCRIPTS_TRAP#trap -- }"
        set +e
        (exit "$status")
        eval "$1"
    fi
    exit "$status"
}

ask() {
    local method=$1 path=$2 body=${3-}
    curl --noproxy '*' --silent --show-error --fail-with-body --max-time 90 --request "$method" \
        ${PRINTER_TOKEN:+--header "Authorization: Bearer $PRINTER_TOKEN"} ${body:+--data "$body"} \
        "$PRINTER_CONTROL/printers/printer/$path"
}

expect() {
    ask POST assert "$1" >&2
}

wait_until() {
    ask POST wait "{\"until\": $1, \"limit\": ${2:-5000}}" >&2
}
