#!/usr/bin/env bash
# abi.sh BUILD_DIR [--renew]: compares the binary interface of the shared libraries of BUILD_DIR, which are
# built with debug information, with the descriptions in tests/install/abi. Additions are allowed. A change
# that breaks programs needs another minor version, whose descriptions --renew writes. Needs abigail-tools.
set -euo pipefail

build=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$here/../..
ignored=$here/abi/interface.abignore
status=0
for library in "$build"/*/libcommonmedia*.so; do
    name=$(basename "$library" .so)
    # Types of the standard library and of the private headers are no part of the interface.
    directory=commonmedia
    test "$name" = libcommonmedia || directory=${name#libcommonmedia_}
    if [ "${2:-}" = --renew ]; then
        abidw --suppressions "$ignored" --headers-dir "$root/$directory/include" --drop-private-types \
            --exported-interfaces-only --no-corpus-path --no-comp-dir-path --no-show-locs \
            --type-id-style hash --out-file "$here/abi/$name.abi" "$library"
    else
        abidiff --suppressions "$ignored" --headers-dir2 "$root/$directory/include" --drop-private-types \
            --no-added-syms "$here/abi/$name.abi" "$library" || status=1
    fi
done
test "$status" -eq 0 && echo "binary interface: as described"
exit "$status"
