# shellcheck shell=bash disable=SC2015,SC2154
#
# The half of the sandbox that runs inside its namespaces, but for the process
# ids: it builds a new root folder, moves there, starts process 1 and outlives it
# to see what became of /user_data.
#
# Argument: a file of declarations (see `settings` in tools/sandbox).
# Descriptors: 3 reads the lifeline, 4 takes result lines, 5 takes the archive of
# what was left on a medium of limited size.

set -u
commandMask=$(umask)
umask 022
# The lifeline alone ends the command; what must follow is then still done.
trap '' INT TERM HUP

die() {
    echo "sandbox: $*" >&2
    exit 125
}

# shellcheck source=/dev/null
source "$1" || die "settings lost"
commandPath=$PATH
PATH=$PATH:/usr/sbin:/sbin # where an ordinary user's shell does not look

# Links among these are copied: /bin is mostly one to /usr/bin.
readonly systemFolders=(/usr /etc /bin /sbin /lib /lib32 /lib64 /libx32 /var/cache/fontconfig)
# Nodes that do nothing to anybody. No disk, no watchdog, no frame buffer.
readonly harmlessNodes=(null zero full random urandom tty)

# What is mounted where, in this order: targets as seen in the new root, their
# sources ("tmpfs" for a new one), modes (ro, rw, or node for a device that may be
# used) and further options.
targets=()
declare -A sources=() modes=() options=()
links=()

show() { # MODE SOURCE TARGET [OPTIONS]
    [[ ${sources[$3]+known} ]] || targets+=("$3")
    modes[$3]=$1 sources[$3]=$2 options[$3]=${4-}
}

planSystem() {
    local folder node
    for folder in "${systemFolders[@]}"; do
        if [[ -L $folder ]]; then
            links+=("$folder")
        elif [[ -d $folder ]]; then
            show ro "$folder" "$folder"
        fi
    done
    [[ -c /dev/null ]] || die "no /dev/null"
    for node in "${harmlessNodes[@]}"; do
        [[ ! -c /dev/$node ]] || show node "/dev/$node" "/dev/$node"
    done
    show rw tmpfs /dev/shm mode=1777,nosuid,nodev
    show rw tmpfs /run/user/0 mode=700,nosuid,nodev
}

planScratch() {
    [[ ! $tmpFolder ]] || show rw "$tmpFolder" /tmp
    [[ ! $keysFolder ]] || show rw "$keysFolder" /keys
    if [[ $userDataFolder && ! $userDataSize ]]; then
        show "${userDataReadOnly:-rw}" "$userDataFolder" /user_data
    else
        show "${userDataReadOnly:-rw}" tmpfs /user_data \
            "mode=755,nosuid,nodev,size=${userDataSize:-50%}"
    fi
}

planBinds() {
    local index
    for ((index = 0; index < ${#binds[@]}; index += 3)); do
        show "${binds[@]:index:3}"
    done
}

# In a plain chroot the mount that holds our root folder has no name in here. Were
# it left shared, everything mounted below would show up on the host.
keepMountsToOurselves() {
    [[ $rootIsMountPoint ]] ||
        nsenter --mount=/proc/self/ns/mnt mount --make-rprivate / ||
        die "mounts cannot be kept from the host"
}

makeRoot() {
    local target folders=(proc sys dev usbkey)
    mount -t tmpfs -o mode=755,nosuid,nodev tmpfs "$root" || die "no scratch root folder"
    for target in "${targets[@]}" "$HOME"; do
        if [[ ! -d ${sources[$target]-/} && ${sources[$target]} != tmpfs ]]; then
            target=${target%/*}
        fi
        folders+=("${target#/}")
    done
    # A folder, not a mount: what is shown below it, such as a project that lies in
    # /tmp, finds its mount points there.
    mkdir -m 1777 "$root/tmp" && (cd "$root" && mkdir -p -- "${folders[@]}") ||
        die "cannot make the mount points"
    for target in "${targets[@]}"; do
        [[ -d $root$target ]] || true >"$root$target" || die "cannot make the mount point $target"
    done
    cp -P -- "${links[@]}" "$toolsFolder/sandbox_lib/first_process.pl" "$root" ||
        die "cannot copy links and the first process"
    ln -s /proc/self/fd "$root/dev/fd" && ln -s fd/0 "$root/dev/stdin" &&
        ln -s fd/1 "$root/dev/stdout" && ln -s fd/2 "$root/dev/stderr" || die "cannot make links"
}

tableField() {
    local text=${1//\\/\\134}
    text=${text// /\\040} text=${text//$'\t'/\\011} text=${text//$'\n'/\\012}
    printf '%s ' "${text//#/\\043}"
}

# Submounts come along: leaving some out is what a user namespace refuses.
mountTable() {
    local target
    for target in "${targets[@]}"; do
        tableField "${sources[$target]}"
        tableField "$root$target"
        if [[ ${sources[$target]} == tmpfs ]]; then
            echo "tmpfs ${options[$target]} 0 0"
        else
            echo "none rbind 0 0"
        fi
    done
}

mountEverything() {
    # Not from a pipe: the table is read more than once.
    mountTable >"$root/table" && mount --all --no-canonicalize --fstab "$root/table" &&
        rm "$root/table" || die "cannot mount what the command is to see"
}

fillMedium() {
    [[ ! $userDataSize || ! $userDataFolder ]] || cp -a -- "$userDataFolder/." "$root/user_data" ||
        die "$userDataFolder does not fit into $userDataSize"
}

modeOf() { # PATH -> sets mode
    local path=$1
    while [[ $path && ! ${modes[$path]-} ]]; do
        path=${path%/*}
    done
    mode=${path:+${modes[$path]}}
}

# Only now, mount by mount: a bind mount takes over the options of what it shows,
# and a user namespace insists on keeping each of them. It would not keep "root"
# from opening a disk's node in a folder that is shown: nodev does.
restrictMounts() {
    local point flags wanted mode
    while read -r _ _ _ _ point flags _; do
        printf -v point %b "$point"
        [[ $point == "$root"/* ]] || continue
        modeOf "${point#"$root"}"
        [[ $mode != node ]] || continue
        wanted=$flags
        [[ $mode != ro ]] || wanted=${wanted/#rw/ro}
        [[ ,$wanted, == *,nosuid,* ]] || wanted+=,nosuid
        [[ ,$wanted, == *,nodev,* ]] || wanted+=,nodev
        [[ $flags == "$wanted" ]] || mount --no-canonicalize -o "remount,bind,$wanted" "$point" ||
            die "cannot restrict the use of ${point#"$root"}"
    done </proc/self/mountinfo
}

# A medium of limited size is gone once unmounted, unless somebody stands on
# another mount of it that no path leads to.
standOnMedium() {
    [[ $userDataSize && $userDataFolder ]] || return 0
    mkdir "$root/medium" && mount --bind "$root/user_data" "$root/medium" &&
        cd "$root/medium" && umount -l "$root/medium" && rmdir "$root/medium" ||
        die "cannot keep hold of the medium"
}

# Where the host's mounts can be left behind altogether, they are: process 1
# detaches them, once it has its own /proc, which a user namespace grants only as
# long as the old one is still in sight. In a plain chroot the kernel refuses all
# that, and the right to leave a root folder is taken from the command instead.
leaveHost() {
    enter=()
    oldRoot=
    if [[ $rootIsMountPoint ]]; then
        oldRoot=/old_root
        mkdir "$root$oldRoot" && pivot_root "$root" "$root$oldRoot" ||
            die "cannot leave the host's root folder"
        root=
    else
        enter=(chroot "$root")
    fi
    [[ $ownUserNamespace ]] || enter+=(setpriv --bounding-set
        "-all,+chown,+dac_override,+fowner,+fsetid,+kill,+setgid,+setuid,+ipc_owner,+sys_nice,+sys_admin,+sys_boot")
}

setEnvironment() {
    local assignment
    unset TMPDIR DBUS_SESSION_BUS_ADDRESS WAYLAND_DISPLAY SSH_AUTH_SOCK OLDPWD
    export XDG_RUNTIME_DIR=/run/user/0
    for assignment in "${environment[@]}"; do
        export "${assignment?}"
    done
}

# The shell would report the end by SIGHUP that a reboot is: on /dev/null.
runFirstProcess() {
    umask "$commandMask"
    exec {errors}>&2
    {
        "${enter[@]}" unshare --pid --fork --kill-child perl /first_process.pl \
            "$commandPath" "$workingFolder" "$oldRoot" "$userDataBusy" "$keysFolder" \
            "${command[@]}" \
            2>&$errors {errors}>&- 5>&-
    } 2>/dev/null
    echo "namespace=$?" >&4
    echo "namespace_ended=${EPOCHREALTIME/[.,]/}000" >&4
    exec {errors}>&-
}

reportUserData() {
    local devices state=mounted
    devices=$(stat -c %d "$root/" "$root/user_data")
    [[ ${devices%$'\n'*} != "${devices#*$'\n'}" ]] || state=unmounted
    echo "user_data=$state" >&4
}

planSystem
planScratch
planBinds
keepMountsToOurselves
makeRoot
mountEverything
fillMedium
restrictMounts
standOnMedium
leaveHost
setEnvironment
runFirstProcess
reportUserData
if [[ $userDataSize && $userDataFolder ]]; then
    tar --create --file - . >&5 && echo "medium=complete" >&4 ||
        echo "sandbox: /user_data could not be read back" >&2
fi
