# A virtual fiscal printer for the tests of a till, for shell scripts: source it. It needs curl, and telvofm-printer on
# the path or in TELVOFM_PRINTER. docs/control.md describes what can be asked.
#
#     start_printer                             its address is $PRINTER_ADDRESS; it ends with the script
#     ask GET state                             prints what is answered; fails when it is an error
#     ask POST faults '{"kind": "paperOut"}'
#     expect '{"committed": []}'                fails with the differences on standard error
#     wait_until '{"situation": "idle"}' 5000   the same, within so many milliseconds

start_printer() {
    local folder line
    folder=$(mktemp -d)
    mkfifo "$folder/paper"
    "${TELVOFM_PRINTER:-telvofm-printer}" --listen 127.0.0.1:0 --control 127.0.0.1:0 "$@" >"$folder/paper" 2>&1 &
    PRINTER_PROCESS=$!
    trap 'kill "$PRINTER_PROCESS" 2>/dev/null' EXIT
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

ask() {
    local method=$1 path=$2 body=${3-}
    curl --silent --show-error --fail-with-body --max-time 90 --request "$method" ${body:+--data "$body"} \
        "$PRINTER_CONTROL/printers/printer/$path"
}

expect() {
    ask POST assert "$1" >&2
}

wait_until() {
    ask POST wait "{\"until\": $1, \"limit\": ${2:-5000}}" >&2
}
