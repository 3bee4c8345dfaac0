#!/usr/bin/env bash
# tools/web.sh PROGRAM DIRECTORY: assembles the page in DIRECTORY and serves it to this machine alone, until
# interrupted. THERMOPIX_WEB_PORT chooses the port (8017).
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..
directory=$2
port=${THERMOPIX_WEB_PORT:-8017}

"$root/web/assemble" "$1" "$directory"
echo "The page: http://127.0.0.1:$port/ (or open $directory/index.html)"
exec python3 -m http.server --bind 127.0.0.1 --directory "$directory" "$port"
