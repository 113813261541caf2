#!/usr/bin/env bash
# Sets up, builds and runs every test: a private PostgreSQL server on loopback is started for the
# store tests, so they run on both engines.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${KX_BUILD_DIR:-$here/build}
"$here/scripts/setup.sh" "$build"

export KX_PG_DIR=${KX_PG_DIR:-$build/pgtest}
eval "$("$here/scripts/pg-test-server.sh" start)"
export KX_TEST_PG_URL
trap '"$here/scripts/pg-test-server.sh" stop >/dev/null 2>&1 || true' EXIT
echo "PostgreSQL for tests: $KX_TEST_PG_URL"

ctest --test-dir "$build" -j2 --output-on-failure "$@"
