#!/usr/bin/env bash
# Drives a simulated site of slow panels the way a site runs it, through the command line and the
# service, and then compares every panel's memory with the database:
#   1. kx410ctl sends every user to every panel, PARALLEL panels at once;
#   2. some users are edited, added and removed in the database, the panels make passages, and
#      kx410d runs its daily send (changed users only) and its daily retrieval with erase;
#   3. every panel's card memory is read back through the simulator's control port and compared
#      with the database user by user (removed users must be gone); every passage the panels made
#      must be in the database once, and the panels' record memories must be empty.
#
#   scripts/slow-site.sh [USERS] [PANELS] [DELAY_MS] [PARALLEL]   (defaults 2000 64 20 64)
# Needs a built tree in build/ (or KX_BUILD_DIR). Loopback only; ports 48200-48299.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${KX_BUILD_DIR:-$here/build}
users=${1:-2000}
panels=${2:-64}
delay=${3:-20}
parallel=${4:-64}
passages_per_panel=50
dir=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$dir"' EXIT
ctl=("$build/cli/kx410ctl" --data-dir "$dir/site" --admin-password 1234 --yes --broadcast 127.0.0.1)
control=48290
live=48291
seconds() { date +%s.%N; }
since() { echo "$(seconds) - $1" | bc | xargs printf '%.2f'; }
say() { printf '%s  %s\n' "$(date +%T)" "$*"; }

# The panels, answering DELAY ms late, pushing live frames to the service.
sim_args=(--control-port $control --status-port off --search-port off --answer-delay "$delay"
          --push 127.0.0.1:$live)
for ((p = 1; p <= panels; p++)); do
    sim_args+=(--panel "$p:$(printf '%04X' $((0x1000 + p))):$((48200 + p))")
done
"$build/sim/kx410-panelsim" "${sim_args[@]}" >"$dir/sim.log" 2>&1 &
"${ctl[@]}" setup --server >/dev/null 2>&1
for ((p = 1; p <= panels; p++)); do
    "${ctl[@]}" panels add --number "$p" --ip 127.0.0.1 --port $((48200 + p)) \
        --serial "$(printf '%04X' $((0x1000 + p)))" >/dev/null
done
for ((i = 1; i <= users; i++)); do
    echo "$i;$((500000 + i));Ad$i;Soyad$i;1;;;;;;"
done >"$dir/users.csv"
"${ctl[@]}" users import-csv "$dir/users.csv" >/dev/null
ask() { # one control command, one answer line
    /usr/bin/python3 -c '
import socket, sys
s = socket.create_connection(("127.0.0.1", int(sys.argv[1])))
s.sendall((sys.argv[2] + "\n").encode()); print(s.makefile().readline().strip())' $control "$1"
}
for ((try = 0; try < 50; try++)); do ask panels >/dev/null 2>&1 && break; sleep 0.2; done

say "$users users to $panels panels answering in $delay ms, $parallel at once"
start=$(seconds)
"${ctl[@]}" users send --all-panels --parallel "$parallel" >"$dir/send.log" 2>&1 \
    || { tail -20 "$dir/send.log"; exit 1; }
say "full send: $(since "$start") s"

# Changes since the send: 10 edited (new card and group), 2 added, 3 removed.
for ((i = 1; i <= 10; i++)); do
    echo "$((i * 7));$((900000 + i));Yeni$i;Soyad;2;;;;;;"
done >"$dir/changed.csv"
echo "$((users + 1));$((700000 + users + 1));Ek;Bir;1;;;;;;" >>"$dir/changed.csv"
echo "$((users + 2));$((700000 + users + 2));Ek;Iki;1;;;;;;" >>"$dir/changed.csv"
"${ctl[@]}" users import-csv "$dir/changed.csv" >/dev/null
for id in 3 5 $((users - 1)); do "${ctl[@]}" users remove --user "$id" >/dev/null; done
for ((p = 1; p <= panels; p++)); do ask "seed $p $passages_per_panel" >/dev/null; done

requests() { # how many requests of a kind all panels received
    local sum=0 n
    for ((p = 1; p <= panels; p++)); do
        n=$(ask "requests $p" | sed -n "s/.* $1=\\([0-9]*\\).*/\\1/p")
        sum=$((sum + ${n:-0}))
    done
    echo $sum
}
sent_before=$(requests NC)
deleted_before=$(requests DC)

# The service's daily send (changed users only) and retrieval a few seconds from now.
at() { date -d "+$1 seconds" +%H:%M:%S; }
"${ctl[@]}" schedule set --send on --send-changed on --send-time "$(at 8)" --receive on --receive-time "$(at 9)" >/dev/null
"$build/src/service/kx410d" --data-dir "$dir/site" --broadcast 127.0.0.1 --listen 127.0.0.1 \
    --port $live --udp-port 0 --parallel "$parallel" --erase-after-retrieval \
    >"$dir/service.log" 2>&1 &
service=$!
send_began= send_took= pull_began= pull_took=
for ((wait = 0; wait < 6000; wait++)); do
    log=$(cat "$dir/service.log" 2>/dev/null || true)
    [[ -z $send_began && $log == *"daily send started"* ]] && send_began=$(seconds)
    [[ -z $send_took && $log == *"daily send ended"* ]] && send_took=$(since "$send_began")
    [[ -z $pull_began && $log == *"daily retrieval started"* ]] && pull_began=$(seconds)
    [[ -z $pull_took && $log == *"daily retrieval ended"* ]] && pull_took=$(since "$pull_began")
    [[ -n $send_took && -n $pull_took ]] && break
    sleep 0.1
done
kill -TERM $service; wait $service || true
say "service: daily send of changed users ${send_took:-?} s, daily retrieval ${pull_took:-?} s"
say "daily send: $(($(requests NC) - sent_before)) users written and $(($(requests DC) - deleted_before)) deleted over $panels panels (12 and 3 a panel changed)"

# Each panel's card memory against the database.
"${ctl[@]}" users list >"$dir/db-users.txt"
/usr/bin/python3 - "$dir/db-users.txt" $control "$panels" "$((users + 2))" <<'PY'
import socket, sys
rows = open(sys.argv[1], encoding="utf-8").read().split("\n")[1:]
db = {}
for row in rows:
    f = row.split()
    if f:
        db[int(f[0])] = (int(f[1]), int(f[-2]))  # card, group
s = socket.create_connection(("127.0.0.1", int(sys.argv[2])))
reader = s.makefile()
def ask(line):
    s.sendall((line + "\n").encode())
    return reader.readline().strip()
wrong = 0
for panel in range(1, int(sys.argv[3]) + 1):
    for user in range(1, int(sys.argv[4]) + 1):
        answer = ask(f"getuser {panel} {user}")
        block = answer.split()[-1] if answer.startswith("OK") else ""
        held = None if ("none" in answer or len(block) != 44) else (int(block[5:15]), int(block[21:25]))
        if held != db.get(user):
            wrong += 1
            if wrong <= 10:
                print(f"    panel {panel} user {user}: panel holds {held}, database {db.get(user)}")
print(f"card memories: {wrong} differences from the database")
sys.exit(1 if wrong else 0)
PY
stored=$(sqlite3 "$dir/site/KX410_DB200.db" "select count(*) || ' rows, ' || count(distinct [Panel ID] || '|' || ID || '|' || Tarih || '|' || [Kapi ID]) || ' distinct' from AccessDatas")
left=0
for ((p = 1; p <= panels; p++)); do
    held=$(ask "records $p" | sed -n 's/.*records=\([0-9]*\).*/\1/p')
    left=$((left + ${held:-0}))
done
say "passages made $((panels * passages_per_panel)); stored: $stored; left in the panels: $left"
[ "$stored" = "$((panels * passages_per_panel)) rows, $((panels * passages_per_panel)) distinct" ] && [ "$left" = 0 ]
