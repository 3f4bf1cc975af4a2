# shellcheck shell=bash
# Sourced: a bare Debian 12 in a folder, as a fresh machine has it, and commands in it. Needs root and mmdebstrap.

mirror_patience=300 # seconds: a mirror that is slower is none

# Each source of Debian 12 that apt reads on this system, a line each in the form of sources.list. What other vendors
# offer is left out.
debian_sources() {
    # shellcheck disable=SC2016 # apt fills it in
    apt-get indextargets --format '$(ORIGIN) $(CODENAME) deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' | sed -n 's/^Debian bookworm[a-z-]* deb /deb /p' | sort -u
}

# Its packages come from where this system has its own, in the same way: by the same proxy, if there is one. Made once a
# week into FOLDER.tar; why it can't be goes to standard error.
make_bare_root() { # make_bare_root FOLDER
    local root=$1 said sources options
    [ "$(id -u)" = 0 ] || { echo "only root can make a bare Debian" >&2; return 1; }
    # shellcheck source=Tools/setup.sh
    (. Tools/setup.sh bare) || return
    unshare --mount --net --pid --fork true 2>/dev/null || { echo "there are no namespaces here" >&2; return 1; }
    if [ -z "$(find "$root.tar" -mtime -7 2>/dev/null)" ]; then
        if ! said=$(timeout $mirror_patience apt-get update -q 2>&1); then # which source is Debian's is in what apt fetches of it
            printf 'the sources of apt can not be read; apt-get said at its end:\n%s\n' "$(tail -n 5 <<<"$said")" >&2
            return 1
        fi
        mapfile -t sources < <(debian_sources)
        [ ${#sources[@]} -gt 0 ] || { echo "apt has no source of Debian 12 on this system" >&2; return 1; }
        mapfile -t options < <(apt-config dump | grep -iE '^Acquire::(https?::Proxy[ :]|Check-)' | sed 's/^/--aptopt=/')
        if ! said=$(timeout $mirror_patience mmdebstrap --mode=root --variant=minbase "${options[@]}" \
            bookworm "$root.tar" "${sources[@]}" 2>&1); then
            rm -f "$root.tar"
            printf 'a bare Debian can not be made; mmdebstrap said at its end:\n%s\n' "$(tail -n 5 <<<"$said")" >&2
            return 1
        fi
    fi
    rm -rf "$root"
    mkdir -p "$root" && tar -x -C "$root" -f "$root.tar" && cp /etc/resolv.conf "$root/etc/" || return
    if ! said=$(in_bare_root "$root" timeout $mirror_patience apt-get update -q 2>&1); then
        printf 'packages can not be fetched; apt-get said at its end:\n%s\n' "$(tail -n 5 <<<"$said")" >&2
        return 1
    fi
}

# Becomes the command, with mounts of its own, on the caller's network and among its processes.
enter_bare_root() { # enter_bare_root FOLDER COMMAND...
    exec unshare --mount -- bash -c '
        root=$1
        shift
        mkdir -p "$root/tmp/.X11-unix" /tmp/.X11-unix
        # A mount point, so that namespaces can be made in it.
        mount --bind "$root" "$root" && mount -t proc proc "$root/proc" && mount --rbind /dev "$root/dev" &&
            mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix" || exit 1
        # Not by chroot: who is in one may not make a namespace of users, as the tests do.
        cd "$root" && pivot_root . . && umount -l . || exit 1
        exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' enter_bare_root "$@"
}

# Runs the command among processes of its own, which all end with it.
in_bare_root() { # in_bare_root FOLDER COMMAND...
    (exec unshare --mount --pid --fork --kill-child -- bash -c \
        "$(declare -f enter_bare_root); enter_bare_root \"\$@\"" in_bare_root "$@")
}
