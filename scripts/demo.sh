# The stations of ./run, which sources this file. Given: demo, the folder of their files; names, Alpha first; storm, the
# scenario file; scenario, its name for the recorder; bin, the folder of programs. Kept: ending, code.
# shellcheck shell=bash disable=SC2154

declare -A address=([Alpha]=127.0.0.1 [Bravo]=127.0.0.2 [Charlie]=127.0.0.3) pid=()
ending=no      # yes after a signal
code=0         # of the first station that failed
watcher=""     # shows what Alpha prints
started=""     # when the first station was started, seconds since 1970

# ini_value FILE SECTION KEY: the value of a key, empty when there is none.
ini_value() {
    awk -F '[ \t]*=[ \t]*' -v section="[$2]" -v key="$3" '
        { sub(/\r$/, "") }
        /^\[/ { inside = tolower($0) == tolower(section) }
        inside && tolower($1) == tolower(key) { sub(/^[^=]*=[ \t]*/, ""); print; exit }' "$1"
}

# set_ini_value FILE SECTION KEY VALUE: changes a key, or adds it.
set_ini_value() {
    awk -F '[ \t]*=[ \t]*' -v section="[$2]" -v key="$3" -v value="$4" '
        function put() { if (!done) print key "=" value; done = 1 }
        { sub(/\r$/, "") }
        /^\[/ { if (inside) put(); inside = tolower($0) == tolower(section) }
        inside && tolower($1) == tolower(key) { put(); next }
        { print }
        END { if (!inside && !done) print section; put() }' "$1" >"$1.new"
    mv "$1.new" "$1"
}

# place NAME KEY: latitude or longitude of a station.
place() { ini_value "$storm" "station $1" "$2"; }

# Ends the run when the scenario lacks a station.
check_stations() {
    local name
    for name in "${names[@]}"; do
        [[ -n $(place "$name" latitude) && -n $(place "$name" longitude) ]] && continue
        echo "run: $storm: no place of a station $name" >&2
        exit 1
    done
}

# prepare NAME: settings and station list of a station that has none yet: Alpha knows all others, they know Alpha. The
# client sockets follow the list; Alpha has two.
prepare() {
    local name=$1 folder=$demo/$1 peers=(Alpha) peer row=0
    if [[ $name == Alpha ]]; then peers=("${names[@]:1}"); fi
    mkdir -p "$folder"
    if [[ ! -e $folder/veltrix.ini ]]; then
        printf '[Setting]\nStationName=%s\nLatitude=%s\nLongitude=%s\nRemoteHost=%s\nLog=1\n' "$name" \
            "$(place "$name" latitude)" "$(place "$name" longitude)" "${address[${peers[0]}]}" >"$folder/veltrix.ini"
    fi
    if [[ ! -e $folder/StationList.dat ]]; then
        for peer in "${peers[@]}"; do
            row=$((row + 1))
            printf 'Station %02d; %s; %s; MAP_2000.BMP; ; %s; %s; 0; 1; 0;\n' "$row" "$(place "$peer" longitude)" \
                "$(place "$peer" latitude)" "${address[$peer]}" "$peer"
        done >"$folder/StationList.dat"
    fi
    set_ini_value "$folder/veltrix.ini" ClientSocket Tag0 "$(row_of "$name" "${peers[0]}")"
    set_ini_value "$folder/veltrix.ini" ClientSocket Tag1 "${peers[1]:+$(row_of "$name" "${peers[1]}")}"
}

# row_of NAME PEER: the row of a station in another one's list. A station that is not in it yet will come to the first
# free row as soon as it says hello.
row_of() {
    awk -F ' *; *' -v peer="$2" '
        $7 == peer { row = NR; exit }
        !free && ($7 == "" || $7 == "0") { free = NR }
        END { print row ? row : free ? free : NR + 1 }' "$demo/$1/StationList.dat"
}

# start NAME OPTION...: a station of the storm. In a session of its own, so that a Ctrl-C reaches us alone.
start() {
    local name=$1 folder=$demo/$1
    started=${started:-$(date +%s)}
    rm -f "$folder/control"
    : >"$folder/output.txt"
    SNDINPUT_SOURCE=storm:$scenario,$name setsid "$bin/veltrix" "${@:2}" --dir "$folder" \
        --settings "$folder/veltrix.ini" --address "${address[$name]}" --recorder "$bin/SndInput" \
        --control "$folder/control" >"$folder/output.txt" &
    pid[$name]=$!
    if [[ $name == Alpha ]]; then
        setsid tail -n +1 -s 0.2 -f --pid="${pid[Alpha]}" "$folder/output.txt" &
        watcher=$!
    fi
}

runs() { [[ -n ${pid[$1]:-} ]] && kill -0 "${pid[$1]}" 2>/dev/null; }

all_run() {
    local name
    for name in "${names[@]}"; do
        if ! runs "$name"; then
            echo "$name has ended."
            return 1
        fi
    done
}

wait_until_started() {
    local name
    for name in "${names[@]}"; do
        while [[ $ending == no && ! -S $demo/$name/control ]] && all_run; do sleep 0.1 || true; done
    done
}

# Opens the map in Alpha's window, which begins with the polar display.
show_map() {
    timeout 15 "$bin/veltrix-ctl" --control "$demo/Alpha/control" click Picture1 >/dev/null || true
}

# The displays of Alpha, as long as it runs: map, polar display, and the sync display of each other station.
save_pictures() {
    local i
    runs Alpha || return 0
    save Picture4 map
    save Picture1 polar
    save 'PicSync(0)' sync
    for ((i = 2; i < ${#names[@]}; i++)); do save "PicSync($((i - 1)))" "sync-${names[i]}"; done
}

save() {
    timeout 15 "$bin/veltrix-ctl" --control "$demo/Alpha/control" save "$1" "$demo/$2.bmp" >/dev/null || true
}

# Ends the stations that run, and their recorders, which would stay for some minutes, ready for the next start. The first
# exit code that is not 0 is kept.
end_stations() {
    local name result block
    trap '' INT TERM HUP
    trap - EXIT
    ended=$(date +%s)
    for name in "${names[@]}"; do
        if runs "$name"; then kill -TERM "${pid[$name]}" 2>/dev/null || true; fi
    done
    for name in "${names[@]}"; do
        [[ -n ${pid[$name]:-} ]] || continue
        for _ in {1..150}; do
            runs "$name" || break
            sleep 0.1
        done
        if runs "$name"; then
            echo "run: $name does not end, and is killed" >&2
            kill -KILL "${pid[$name]}" 2>/dev/null || true
        fi
        wait "${pid[$name]}" && result=0 || result=$?
        if [[ $result != 0 && $code == 0 ]]; then
            echo "run: $name ended with exit code $result" >&2
            code=$result
        fi
        block=$(ini_value "$demo/$name/veltrix.ini" RAMDrive Path)audio.dat
        (cd "$demo/$name" && timeout 15 "$bin/SndInput" /stop "/of=$block" >/dev/null 2>&1) || true
    done
    if [[ -n $watcher ]]; then wait "$watcher" || true; fi
}

# logs NAME PATTERN: the files in a station's folder Data that this run wrote to, each with a 0 behind it.
logs() {
    find "$demo/$1/Data" -name "$2" -newermt "@$started" -print0 2>/dev/null | sort -z
}

# The summary. The last two seconds do not count: not all of their strikes have been heard.
report() {
    local name file evidence=() seconds=$((ended - 2 - started))
    for name in "${names[@]}"; do
        while IFS= read -r -d '' file; do evidence+=(--log "$name=$file"); done < <(logs "$name" '*N.csv')
    done
    for name in "${names[@]:1}"; do
        [[ ${evidence[*]} == *"--log $name="* ]] || continue
        while IFS= read -r -d '' file; do evidence+=(--pairs "$name=$file"); done \
            < <(logs Alpha "Corr_* Station $(printf %02d "$(row_of Alpha "$name")").csv")
    done
    echo
    if [[ $seconds -gt 0 && ${evidence[1]:-} == Alpha=* ]]; then
        "$bin/veltrix-storm" judge "$scenario" --from "$(date -u -d "@$started" +%FT%TZ)" --seconds "$seconds" \
            --fixes "$demo/Alpha/output.txt" "${evidence[@]}" || true
    else
        echo "Nothing was heard."
    fi
    echo
    echo "Alpha's displays: $(find "$demo" -maxdepth 1 -name '*.bmp' -newermt "@$started" | sort | paste -sd ' ')"
    echo "Logs of a station NAME: $demo/NAME/Data, $demo/NAME/log; what Alpha printed: $demo/Alpha/output.txt"
}
