#!/usr/bin/env bash
# abi.sh BUILD_DIR [--renew]: compares the binary interface of the shared libraries of BUILD_DIR, which are
# built with debug information, with the descriptions in tests/install/abi. Additions are allowed. A change
# that breaks programs needs another minor version, whose descriptions --renew writes. Needs abigail-tools.
set -euo pipefail

build=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
now=$(mktemp -d)
trap 'rm -rf "$now"' EXIT
status=0
for library in "$build"/*/libcommonmedia*.so; do
    name=$(basename "$library" .so)
    # The types of the public headers, without those of the standard library.
    abidw --suppressions "$here/abi/interface.abignore" --drop-private-types --exported-interfaces-only \
        --headers-dir "$here/../../$(basename "$(dirname "$library")")/include" \
        --no-corpus-path --no-comp-dir-path --no-show-locs --type-id-style hash \
        --out-file "$now/$name.abi" "$library"
    if [ "${2:-}" = --renew ]; then
        cp "$now/$name.abi" "$here/abi/$name.abi"
    else
        abidiff --no-added-syms "$here/abi/$name.abi" "$now/$name.abi" || status=1
    fi
done
test "$status" -eq 0 && echo "binary interface: as described"
exit "$status"
