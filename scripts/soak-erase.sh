#!/usr/bin/env bash
# Measures whether passages are lost while a busy simulated panel is pulled with erase again and
# again, the way an operator's script would: kx410-panelsim presents cards at RATE a second and
# pushes each passage's live frame to a counter on loopback (that count is what the panel made);
# kx410ctl pulls with --erase for SECONDS; then the presentations stop and the panel is emptied.
# Every passage made must be in AccessDatas, or, for a stranger's card, in UnreadRecords.
# With KX_SOAK_LIVE=1 the counter passes the live frames on to `kx410ctl live`, as panels push to
# a running station: passages made between the last count and the erase then arrive live.
#
#   scripts/soak-erase.sh [SECONDS] [RATE] [--pg URL]     (needs a built tree in build/)
# Loopback only; ports 48100-48199.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${KX_BUILD_DIR:-$here/build}
seconds=${1:-60}
rate=${2:-50}
db_args=()
pg_url=
if [ "${3:-}" = "--pg" ]; then pg_url=$4; db_args=(--db "$pg_url"); fi
dir=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$dir"' EXIT
ctl=("$build/cli/kx410ctl" --data-dir "$dir" --admin-password 1234 --yes "${db_args[@]}")

if [ -n "${KX_SOAK_LIVE:-}" ]; then
    "${ctl[@]}" setup --server >/dev/null 2>&1
    "${ctl[@]}" live --port 48102 --listen 127.0.0.1 --no-udp --no-backfill >/dev/null 2>&1 &
    sleep 1
fi
/usr/bin/python3 - "$dir/made" "${KX_SOAK_LIVE:-}" <<'PY' &
import socket, sys, threading, time
out = sys.argv[1]
forward = sys.argv[2] != ""
server = socket.socket(); server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
server.bind(("127.0.0.1", 48100)); server.listen(4)
count = 0
lock = threading.Lock()
def serve(conn):
    global count
    buf = b""
    station = None
    for attempt in range(100 if forward else 0):
        try:
            station = socket.create_connection(("127.0.0.1", 48102))
            break
        except OSError:
            time.sleep(0.1)
    while True:
        data = conn.recv(65536)
        if not data:
            return
        if station:
            station.sendall(data)
        buf += data
        while b"**" in buf:
            frame, buf = buf.split(b"**", 1)
            if b"%CD" in frame:
                with lock:
                    count += 1
                    open(out, "w").write(str(count))
                    open(out + ".frames", "ab").write(frame[frame.index(b"%CD"):] + b"\n")
while True:
    conn, _ = server.accept()
    threading.Thread(target=serve, args=(conn,), daemon=True).start()
PY
sleep 0.5
"$build/sim/kx410-panelsim" --panel 1:1001:48101 --push 127.0.0.1:48100 --seed-users ${KX_SOAK_USERS:-40} \
    --status-port off --search-port off --control-port 48199 >"$dir/sim.log" 2>&1 &
sleep 0.5
[ -n "${KX_SOAK_LIVE:-}" ] || "${ctl[@]}" setup --server >/dev/null 2>&1
"${ctl[@]}" panels add --number 1 --ip 127.0.0.1 --port 48101 --serial 1001 >/dev/null
control() { exec 3<>/dev/tcp/127.0.0.1/48199; echo "$1" >&3; read -r -t 5 answer <&3 || true; exec 3>&-; }

control "rate 1 $rate"
pulls=0
end=$((SECONDS + seconds))
while [ $SECONDS -lt $end ]; do
    "${ctl[@]}" records pull --panel 1 ${KX_SOAK_ERASE---erase} >/dev/null 2>&1 || true
    pulls=$((pulls + 1))
done
control "rate 1 0"
sleep 1
for _ in 1 2 3; do "${ctl[@]}" records pull --panel 1 --erase >/dev/null 2>&1 || true; done
sleep 1

made=$(grep -c "" "$dir/made.frames" 2>/dev/null || echo 0)
made_strangers=$(grep -c '^%CD.......00000' "$dir/made.frames" 2>/dev/null || true)
made_users=$((made - made_strangers))
sql() {
    if [ ${#db_args[@]} -eq 0 ]; then sqlite3 "$dir/KX410_DB200.db" "$1"; else psql -Atq "$pg_url" -c "$1"; fi
}
stored=$(sql 'SELECT COUNT(*) FROM "AccessDatas" WHERE "ID" > 0')
strangers_live=$(sql 'SELECT COUNT(*) FROM "AccessDatas" WHERE "ID" = 0')
strangers_unread=$(sql "SELECT COUNT(*) FROM \"UnreadRecords\" WHERE \"Neden\" = 'Kullanıcısız kayıt'")
echo "pulls=$pulls passages_made=$made_users stored=$stored lost=$((made_users - stored))" \
    "strangers_made=$made_strangers kept_unread=$strangers_unread stored_live=$strangers_live"
