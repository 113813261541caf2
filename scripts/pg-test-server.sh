#!/usr/bin/env bash
# A private PostgreSQL cluster on 127.0.0.1 for the store tests.
#
#   scripts/pg-test-server.sh start   starts it (creating it on first use) and prints
#                                     "export KX_TEST_PG_URL=postgresql://..." on stdout,
#                                     so  eval "$(scripts/pg-test-server.sh start)"  sets it up
#   scripts/pg-test-server.sh url     prints the URL of the running cluster
#   scripts/pg-test-server.sh stop    stops it
#   scripts/pg-test-server.sh status  tells whether it runs
#
# The cluster lives in $KX_PG_DIR (default: build/pgtest under the repository). initdb refuses
# to run as root, so as root the server runs as the "postgres" user.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dir=${KX_PG_DIR:-$here/build/pgtest}
mkdir -p "$dir"
dir=$(cd "$dir" && pwd)
data=$dir/pg
sock=$dir/sock
portfile=$dir/port

say() { echo "pg-test-server: $*" >&2; }

find_bin() {
    if [ -n "${PGBIN:-}" ] && [ -x "$PGBIN/pg_ctl" ]; then echo "$PGBIN"; return; fi
    local b
    for b in /usr/lib/postgresql/15/bin $(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V -r); do
        if [ -x "$b/pg_ctl" ]; then echo "$b"; return; fi
    done
    if command -v pg_ctl >/dev/null 2>&1; then dirname "$(command -v pg_ctl)"; return; fi
    say "PostgreSQL server binaries not found (install the postgresql package)"
    exit 1
}
bin=$(find_bin)

as_owner() {
    if [ "$(id -u)" = 0 ]; then
        runuser -u postgres -- "$@"
    else
        "$@"
    fi
}

port_in_use() {
    (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

pick_port() {
    local p tries=0
    p=$((54320 + RANDOM % 2000))
    while port_in_use "$p"; do
        p=$((p + 1))
        tries=$((tries + 1))
        if [ "$tries" -gt 500 ]; then say "no free port found"; exit 1; fi
    done
    echo "$p"
}

running() {
    [ -f "$data/PG_VERSION" ] && as_owner "$bin/pg_ctl" -D "$data" status >/dev/null 2>&1
}

url() {
    echo "postgresql://postgres@127.0.0.1:$(cat "$portfile")/postgres"
}

start() {
    if running; then
        say "already running"
        echo "export KX_TEST_PG_URL=$(url)"
        return
    fi
    mkdir -p "$data" "$sock"
    if [ "$(id -u)" = 0 ]; then
        chown postgres: "$dir" "$data" "$sock"
    fi
    chmod 700 "$data"
    if [ ! -f "$data/PG_VERSION" ]; then
        say "creating the cluster in $data"
        as_owner "$bin/initdb" -D "$data" -U postgres --auth=trust -E UTF8 --locale=C.UTF-8 >"$dir/initdb.log" 2>&1 \
            || { cat "$dir/initdb.log" >&2; exit 1; }
    fi
    local port
    port=$(pick_port)
    echo "$port" >"$portfile"
    # Test data is thrown away: durability settings off for speed.
    as_owner "$bin/pg_ctl" -D "$data" -l "$data/log" -w -t 60 \
        -o "-c listen_addresses=127.0.0.1 -p $port -k $sock -c fsync=off -c synchronous_commit=off -c full_page_writes=off" \
        start >&2 || { tail -n 20 "$data/log" >&2; exit 1; }
    say "running on 127.0.0.1:$port"
    echo "export KX_TEST_PG_URL=$(url)"
}

stop() {
    if running; then
        as_owner "$bin/pg_ctl" -D "$data" -m fast -w stop >&2
    else
        say "not running"
    fi
}

case "${1:-}" in
    start) start ;;
    stop) stop ;;
    url)
        if running; then url; else say "not running"; exit 1; fi
        ;;
    status)
        if running; then say "running: $(url)"; else say "not running"; exit 3; fi
        ;;
    *)
        echo "usage: $0 start|stop|url|status" >&2
        exit 2
        ;;
esac
