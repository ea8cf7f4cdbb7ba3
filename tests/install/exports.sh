#!/usr/bin/env bash
# exports.sh BUILD_DIR [--renew]: compares what the shared libraries of BUILD_DIR export with the lists in
# tests/install/exports. A line more or less is a change of the interface; --renew writes the lists.
set -euo pipefail

build=$(cd "$1" && pwd)
lists=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/exports
status=0
for library in "$build"/*/libcommonmedia*.so; do
    list=$lists/$(basename "$library" .so).txt
    # The kinds of constructors and destructors have one name, so each is listed once.
    exported=$(nm --dynamic --defined-only --demangle "$library" | cut -d ' ' -f 3- | sed 's/\[abi:cxx11\]//' |
        LC_ALL=C sort -u)
    if [ "${2:-}" = --renew ]; then
        printf '%s\n' "$exported" >"$list"
    else
        diff -u "$list" - <<<"$exported" || status=1
    fi
done
test "$status" -eq 0 && echo "exported names: as listed"
exit "$status"
