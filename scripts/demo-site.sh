# A demonstration site on loopback, sourced by scripts/run.sh (which sets $here, $build and the
# array $args of station arguments). It
#   - sets up a server station in $KX_DEMO_DIR (default $build/demo-data) the first time: three
#     panels on 127.0.0.1, companies, departments, blocks, time groups, access groups with their
#     doors and a few card holders;
#   - starts kx410-panelsim in the background with those panels (it ends with the station) and
#     sends them the time groups, groups and people, before the station opens the folder;
#   - adds --data-dir to $args and points the broadcasts at 127.0.0.1.
# Nothing is sent anywhere but 127.0.0.1. Delete the folder to start the demonstration afresh.
#
# Settings: KX_DEMO_DIR, KX_DEMO_PASSWORD (default 1234), KX_DEMO_PORT (first panel port,
# default 47101), KX_DEMO_RATE (simulated card presentations a second per panel, default 0.2).

# The site itself: every step through kx410ctl, as a script of the person's own would do it.
demo_seed() {
    local dir=$1 password=$2 first_port=$3 ctl=$4
    local serials=(1001 1002 1003)
    local names=("Ana Giriş" "Otopark" "Yemekhane")
    local c=("$ctl" --data-dir "$dir" --admin-password "$password")
    local n
    # What a set-up cut short left behind is made again from nothing.
    rm -f "$dir/Config.cfg" "$dir/KX410_DB200.db" "$dir/KX410_DB200.db-wal" "$dir/KX410_DB200.db-shm"
    "${c[@]}" --lang tr setup --server >/dev/null || return 1
    for n in 1 2 3; do
        "${c[@]}" panels add --number "$n" --ip 127.0.0.1 --port $((first_port + n - 1)) \
            --serial "${serials[n - 1]}" --name "${names[n - 1]}" >/dev/null || return 1
    done
    # The panels push their live passages to the station on loopback.
    sqlite3 "$dir/KX410_DB200.db" "UPDATE PanelSettings SET \"Panel Remote IP1\" = 127, \"Panel Remote IP2\" = 0,
        \"Panel Remote IP3\" = 0, \"Panel Remote IP4\" = 1, \"Panel Remote TCP Port\" = $((first_port - 1));" || return 1
    "${c[@]}" companies add "Kuzey Yazılım" >/dev/null || return 1
    "${c[@]}" companies add "Güney Lojistik" >/dev/null || return 1
    "${c[@]}" departments add "Muhasebe" >/dev/null || return 1
    "${c[@]}" departments add "Üretim" >/dev/null || return 1
    "${c[@]}" blocks add "A Blok" >/dev/null || return 1
    # Who may pass where and when: everyone of group 1 at every door at any time; group 2 at the
    # entry doors (1 and 3) in working hours only, so some passages are refused.
    "${c[@]}" timegroups add "Her Zaman" --number 1 --type 0 >/dev/null || return 1
    "${c[@]}" timegroups add "Mesai" --number 2 --type 3 --start-time 06:00 --end-time 22:00 >/dev/null || return 1
    "${c[@]}" groups add "Tüm Kapılar" --number 1 >/dev/null || return 1
    "${c[@]}" groups add "Sadece Giriş" --number 2 >/dev/null || return 1
    for n in 1 2 3; do
        "${c[@]}" groups doors 1 --panel "$n" --doors 1111 --time-groups 1,1,1,1 >/dev/null || return 1
        "${c[@]}" groups doors 2 --panel "$n" --doors 1010 --time-groups 2,0,2,0 >/dev/null || return 1
    done
    local csv=$dir/demo-users.csv
    cat >"$csv" <<'USERS'
ID;Kart ID;Adi;Soyadi;Grup No;Sifre;Gecis Modu;Kullanici Tipi;Sirket No;Departman No;Plaka
1;1000001;Ayşe;Yılmaz;1;1111;0;0;1;1;34 ABC 101
2;1000002;Mehmet;Kaya;1;2222;0;0;1;2;
3;1000003;Zeynep;Demir;2;3333;0;0;2;2;06 KLM 33
4;1000004;Çağrı;Öztürk;2;0;0;0;2;1;
5;1000005;Ahmet;Şahin;1;0;0;0;1;2;
6;1000006;Elif;Arslan;2;0;0;0;2;1;
7;1000007;Mustafa;Çelik;1;0;0;0;1;1;35 XY 7
8;1000008;Fatma;Doğan;2;0;0;0;2;2;
9;1000009;Emre;Koç;1;0;0;0;1;2;
10;1000010;Selin;Aydın;1;0;0;0;2;1;
20;2000020;Ziyaretçi;Kartı 1;2;0;0;1;0;0;
21;2000021;Ziyaretçi;Kartı 2;2;0;0;1;0;0;
USERS
    "${c[@]}" users import-csv "$csv" >/dev/null || return 1
}

demo_main() {
    local dir=${KX_DEMO_DIR:-$build/demo-data}
    local password=${KX_DEMO_PASSWORD:-1234}
    local first_port=${KX_DEMO_PORT:-47101}
    local rate=${KX_DEMO_RATE:-0.2}
    local ctl=$build/cli/kx410ctl
    local sim=$build/sim/kx410-panelsim
    local a

    # A data folder chosen by hand is the person's own site: no demonstration then.
    for a in "${args[@]}"; do
        case $a in --data-dir|--data-dir=*) return 0 ;; esac
    done
    if [ ! -x "$ctl" ] || [ ! -x "$sim" ]; then
        echo "demo: $ctl or $sim is missing; starting without the demonstration site" >&2
        return 0
    fi

    # Status, search and alarm datagrams of the station and the command line stay on loopback.
    export KX410_BROADCAST=127.0.0.1
    local serials=(1001 1002 1003)
    local n

    mkdir -p "$dir"
    # A station already open on the folder holds its database: nothing here may set the folder up
    # again beneath it or start a second set of panels on the same ports.
    local holder
    holder=$(head -n 1 "$dir/kx410.lock" 2>/dev/null || true)
    if [ -n "$holder" ] && [ "$holder" -eq "$holder" ] 2>/dev/null && kill -0 "$holder" 2>/dev/null; then
        echo "demo: a station is already running on $dir (process $holder); use that one, or quit it first" >&2
        exit 1
    fi
    # The marker is written last, so a set-up that was cut short is made again.
    if [ ! -f "$dir/demo-site.v3.done" ]; then
        echo "demo: setting up a station in $dir" >&2
        if ! demo_seed "$dir" "$password" "$first_port" "$ctl"; then
            echo "demo: the set-up of $dir failed; starting without the demonstration site" >&2
            return 0
        fi
        touch "$dir/demo-site.v3.done"
    fi

    local panels=()
    for n in 1 2 3; do
        panels+=(--panel "$n:${serials[n - 1]}:$((first_port + n - 1))")
    done
    local log=$dir/panelsim.log
    "$sim" "${panels[@]}" --push "127.0.0.1:$((first_port - 1))" --rate "$rate" >"$log" 2>&1 &
    local sim_pid=$!
    # run.sh replaces its shell with the station, which keeps this shell's process id: the
    # simulator is ended once that process is gone (or when the shell that sourced us ends).
    local owner=$$
    (
        while kill -0 "$owner" 2>/dev/null; do sleep 1; done
        kill "$sim_pid" 2>/dev/null
    ) >/dev/null 2>&1 </dev/null &
    disown 2>/dev/null || true

    # Wait until the simulator has opened its three panels (it says so), at most about 5 s.
    local i
    for i in $(seq 50); do
        [ "$(grep -c '^panel ' "$log" 2>/dev/null)" -ge 3 ] && break
        kill -0 "$sim_pid" 2>/dev/null || break
        sleep 0.1
    done
    if ! kill -0 "$sim_pid" 2>/dev/null; then
        echo "demo: the panel simulator did not start (see $log)" >&2
    else
        # Simulated panels start empty: give them the time groups, groups and people before the
        # station opens the folder, so the passages they make are mostly granted from the start.
        local what sent=$dir/demo-send.log
        : >"$sent"
        for what in timegroups groups users; do
            "$ctl" --data-dir "$dir" --admin-password "$password" --yes "$what" send --all-panels >>"$sent" 2>&1 ||
                echo "demo: sending $what to the simulated panels failed (see $sent)" >&2
        done
    fi

    args=(--data-dir "$dir" "${args[@]}")
    cat >&2 <<EOT
demo: station data in $dir; three simulated panels on 127.0.0.1:$first_port..$((first_port + 2))
demo: to log in, open the menu "Kullanıcı" > "Sisteme Giriş" (in English "User" > "System Login")
demo:   and enter the user name "admin" with the administrator password $password
demo: the panels already hold the demonstration's people, groups and time groups; after a change,
demo:   choose "Tüm Paneller" and press "Kullanıcıları Gönder" (or send from the groups pages)
demo: the command line can look at the same site while the station runs, for example:
demo:   $ctl --data-dir $dir users list
demo: quit the station before deleting $dir to start the demonstration afresh
EOT
}

demo_main
unset -f demo_main demo_seed
