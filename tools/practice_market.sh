# For ./run and tools/guanchaotai-lianxi, which source it: the practice market of an application folder.
# $tools is the folder of practice_market and prepare_stores, $seeds that of the lists they read.

# A new program file replaces the old one by a rename, so that one that runs is left alone.
install_file() {
    if ! cmp -s "$1" "$2"; then
        cp "$1" "$2.new"
        mv -f "$2.new" "$2"
    fi
}

market_answers() {
    (
        exec 3<>"/dev/tcp/127.0.0.1/$1"
        printf 'GET /list=sh000001 HTTP/1.0\r\n\r\n' >&3
        grep -aq hq_str_sh000001 <&3
    ) 2>/dev/null
}

market=

end_practice_market() {
    [ -z "$market" ] || kill "$market" 2>/dev/null || true
}

# start_practice_market FOLDER ARGUMENT...: the market chooses a free port and tells it through a file.
# One that a program of the folder is using stays. It ends with the shell that calls this, and doesn't
# hold what guanchaotai-lianxi has open: 3, its standard error, and 9, its lock.
start_practice_market() {
    local folder=$1 port_file=$1/practice_market.port
    shift
    if [ -s "$port_file" ] && market_answers "$(cat "$port_file")"; then
        return
    fi
    rm -f "$port_file"
    "$tools/practice_market" "$seeds/codes.csv" "$port_file" "$@" 3>&- 9>&- &
    market=$!
    until [ -s "$port_file" ]; do
        kill -0 "$market" 2>/dev/null || exit 1
        sleep 0.05
    done
    name_practice_services "$folder" "http://127.0.0.1:$(cat "$port_file")"
}

name_practice_services() {
    local folder=$1 host=$2
    printf '[practice]\n' >"$folder/services.ini"
    printf '[%s]\n'"host=$host"'\n' chart stockpage sitepage newspage vendor search \
        >>"$folder/services.ini"
    # In the order in which the public ones are asked.
    printf '[%s]\nkind=%s\n'"host=$host"'\nahead=6\n' quote sina quote.2 tencent history sina \
        history.2 tencent history.3 eastmoney history.4 csv factors sina fundamentals sina \
        boards sina boards.2 eastmoney stocklist sina stocklist.2 eastmoney \
        >>"$folder/services.ini"
    "$tools/prepare_stores" "$folder" "$seeds" "$host"
    # Nobody has to be spared on the own machine.
    [ -e "$folder/caijiqi.ini" ] ||
        printf '[pace]\npause=0.05\nrandom=0.05\nretries=1,5\n' >"$folder/caijiqi.ini"
}

# It prints its failure; the program is of use without a history.
make_practice_history() {
    "$tools/practice_history" "$seeds/codes.csv" "$seeds/themes.csv" "$1" || true
}

# write_starter FILE COMMAND ARGUMENT...
write_starter() {
    local starter=$1
    shift
    printf '#!/usr/bin/env bash\nexec' >"$starter"
    printf ' %q' "$@" >>"$starter"
    printf '\n' >>"$starter"
    chmod +x "$starter"
}
