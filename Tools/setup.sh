# shellcheck shell=bash
# setup.sh PART: sourced by ./run, ./test, .ci/run and others. Installs what is missing of Tools/packages.txt up to the
# end of that part (run, test or check) and nothing else. Ends the calling script with a clear line where that is not
# possible.

fail() { # fail MESSAGE [STATUS]
    echo "$(basename "$0"): $1" >&2
    exit "${2:-1}"
}

setup_packages() { # setup_packages LIST PART
    local list=$1 last=$2 part='' missing=() package as_root=()
    command -v dpkg-query >/dev/null ||
        fail "this system has no dpkg. PixelWeft is built on Debian 12; see Tools/packages.txt for what it needs."
    while read -r package _; do
        case $package in
            '' | '#'*) continue ;;
            '['*)
                [ "$part" != "[$last]" ] || break
                part=$package
                continue
                ;;
        esac
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done <"$list"
    [ ${#missing[@]} -gt 0 ] || return 0

    echo "Installing ${#missing[@]} missing packages: ${missing[*]}"
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null ||
            fail "you are not root and there is no sudo; as root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get install -y -q --no-install-recommends "${missing[@]}")
    local log
    log=$(mktemp)
    # The lists of a fresh machine are empty or old: update them once, then install.
    if ! { "${as_root[@]}" apt-get update -q && "${install[@]}"; } >"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        fail "the packages could not be installed (the end of what apt-get said is above)"
    fi
    rm -f "$log"
    echo "Packages are installed."
}

setup_packages "$(dirname "${BASH_SOURCE[0]}")/packages.txt" "$1"
