# shellcheck shell=bash
# Sourced: a bare Debian 12 in a folder, as a fresh machine has it, and commands in it. Needs root, and mmdebstrap.

# The packages come from where this system has its own. Why it can't be made goes to standard error.
make_bare_root() { # make_bare_root FOLDER
    local root=$1 say
    [ "$(id -u)" = 0 ] || { echo "only root can make a bare Debian" >&2; return 1; }
    command -v mmdebstrap >/dev/null || { echo "mmdebstrap is not installed" >&2; return 1; }
    unshare --mount --net --pid --fork true 2>/dev/null || { echo "there are no namespaces here" >&2; return 1; }
    # The lists of packages stay, so that apt installs without fetching them again.
    if ! say=$(mmdebstrap --quiet --mode=root --variant=minbase --skip=cleanup/apt/lists bookworm "$root" 2>&1); then
        echo "mmdebstrap could not make it:" >&2
        tail -n 5 <<<"$say" >&2
        return 1
    fi
    cp /etc/resolv.conf "$root/etc/"
}

# Its own processes and mounts, which end with the command; the network is the one of the caller.
in_bare_root() { # in_bare_root FOLDER COMMAND...
    unshare --mount --pid --fork --kill-child -- bash -c '
        root=$1
        shift
        mount -t proc proc "$root/proc" && mount --rbind /dev "$root/dev" && mount -t tmpfs tmpfs "$root/run" || exit 1
        exec chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' in_bare_root "$@"
}
