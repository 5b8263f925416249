# For tools/try_debian and tools/try_package, which source it: a bare Debian in a folder, and commands
# in it. Needs root, mmdebstrap and the mirror that apt uses here.

# bare_root RELEASE FOLDER: makes the root of Debian 12 or 13, with apt and nothing that isn't essential.
bare_root() {
    local suite mirror
    case $1 in
        12) suite=bookworm ;;
        13) suite=trixie ;;
        *)
            echo "Debian 12 or 13, not $1" >&2
            return 2
            ;;
    esac
    # The mirror of apt's first source that has an updates suite: that is where releases come from.
    mirror=$(apt-get indextargets --format '$(SITE) $(RELEASE) $(REPO_URI)' 'Created-By: Packages' |
        awk '$2 ~ /-updates$/ { print $3; exit }')
    mmdebstrap --variant=apt --mode=root --quiet "$suite" "$2" "$mirror"
    cp --dereference /etc/resolv.conf "$2/etc/resolv.conf"
}

# in_bare_root FOLDER COMMAND ARGUMENT...: runs it in a mount and process namespace of its own, with
# which its mounts and processes end.
in_bare_root() {
    unshare --mount --pid --fork --kill-child bash -euc '
        root=$1
        shift
        mount --bind /dev "$root/dev"
        mount -t devpts devpts "$root/dev/pts" -o newinstance,ptmxmode=0666
        mount -t tmpfs tmpfs "$root/dev/shm"
        mount -t proc proc "$root/proc"
        exec chroot "$root" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin \
            LANG=C.UTF-8 "$@"' in_bare_root "$@"
}
