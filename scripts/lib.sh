# Shared by the scripts of this directory; sourced, not run.
#
#   say TEXT                  one line about what happens now
#   need PACKAGE...           installs the Debian packages that are missing, as root or with sudo
#   stage NAME COMMAND...     runs a command quietly and times it; a failure shows the end of its log and ends
#                             the script with the stage's name
#   shown PATTERN NAME COMMAND...
#                             a stage whose log is shown from the last line on that matches the pattern
#   figure NAME VALUE         notes a measured figure; one outside of its limit in scripts/floors.txt ends the script
#   write_table TABLE PAGE    puts a table into the place of a page that is marked for the script
#   result TEXT               prints the last line of a script that succeeded

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
script=scripts/$(basename "$0")
logs=$root/build/logs
jobs=${JOBS:-$(nproc)}
started=$SECONDS
current=start
mkdir -p "$logs"

say() {
    printf '== %s\n' "$*"
}

result() {
    printf '\n%s: OK, %s (%d s)\n' "$script" "$*" "$((SECONDS - started))"
}

# An interrupted script reports its failure as well.
trap 'fail "$current, interrupted"' INT TERM HUP

fail() {
    printf '\n%s: FAILED in stage "%s" (%d s)\n' "$script" "$1" "$((SECONDS - started))"
    exit 1
}

stage() {
    local name=$1 log status begin=$SECONDS
    shift
    current=$name
    log=$logs/$(printf '%s' "$name" | tr -c 'a-zA-Z0-9+' '-').log
    printf '== %-42s ' "$name"
    # A subshell, because inside a condition the shell ignores "set -e".
    set +e
    (
        trap - INT TERM HUP
        set -e
        "$@"
    ) >"$log" 2>&1
    status=$?
    set -e
    last_log=$log
    if [ "$status" -ne 0 ]; then
        printf 'FAILED with status %d after %d s; the end of %s:\n\n' "$status" "$((SECONDS - begin))" "$log"
        tail -n 80 "$log"
        fail "$name"
    fi
    printf 'ok (%d s)\n' "$((SECONDS - begin))"
}

shown() {
    local pattern=$1 from
    shift
    stage "$@"
    from=$(grep -n -E "$pattern" "$last_log" | tail -n 1 | cut -d: -f1) || from=
    if [ -n "$from" ]; then
        tail -n "+$from" "$last_log" | sed 's/^/     /'
    fi
}

figure() {
    local relation limit
    read -r relation limit < <(awk -v name="$1" '$1 == name { print $2, $3 }' scripts/floors.txt) ||
        fail "figure $1, which has no row in scripts/floors.txt"
    printf '%s %s\n' "$1" "$2" >>"$logs/figures.txt"
    awk -v value="$2" -v relation="$relation" -v limit="$limit" \
        'BEGIN { exit !(value != "" && (relation == "<=" ? value + 0 <= limit + 0 : value + 0 >= limit + 0)) }' ||
        fail "figure $1: it is ${2:-missing} and must be $relation $limit"
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "neither root nor sudo: please install with apt-get: ${missing[*]}"
        return 1
    fi
}

install_missing() {
    as_root apt-get update
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

need() {
    local package
    missing=()
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$'; then
            missing+=("$package")
        fi
    done
    if [ "${#missing[@]}" -gt 0 ]; then
        say "packages missing: ${missing[*]}"
        stage "install packages" install_missing
    fi
}

# write_table TABLE PAGE: replaces what the page has between "<!-- this script -->" and "<!-- end -->".
write_table() {
    python3 - "$script" "$@" <<'PYTHON'
import pathlib, re, sys
script, table, page = sys.argv[1:]
mark = re.compile(rf"(<!-- {re.escape(script)} -->\n).*?(?=<!-- end -->)", re.DOTALL)
text = pathlib.Path(page).read_text()
pathlib.Path(page).write_text(mark.sub(lambda found: found.group(1) + pathlib.Path(table).read_text(), text))
PYTHON
}

# configure_and_build PRESET [TARGET...]: without a target everything.
configure_and_build() {
    cmake --preset "$1"
    cmake --build --preset "$1" -j "$jobs" ${2:+--target "${@:2}"}
}
