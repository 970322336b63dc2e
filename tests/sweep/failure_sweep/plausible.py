"""Which failures a system call can meet: what the manual pages of Linux list for it and
a save can run into. Left out are failures that only a broken program causes (EBADF, EFAULT),
and answers that the next call would give the lie: that something is there which is not
(EEXIST where shared memory and semaphores are made), or that the folder of temporary files
is not there (ENOENT where its links are followed)."""

import errno

SHORT = "short"
END = "end"
LASTING = "+"

_LOOK = ("EACCES", "EIO", "ENOENT", "ENOMEM")
_MAKE = ("EACCES", "EDQUOT", "EIO", "EMFILE", "ENFILE", "ENOMEM", "ENOSPC",
         "EOPNOTSUPP", "EROFS")
_OPEN = ("EACCES", "EINTR", "EIO", "EMFILE", "ENFILE", "ENOENT", "ENOMEM")
_SYNC = ("EDQUOT", "EINTR", "EINVAL", "EIO", "ENOSPC", "EROFS")

_FAILURES = {
    "read": ("EAGAIN", "EINTR", "EIO", "EISDIR", "ENOMEM"),
    "write": ("EAGAIN", "EDQUOT", "EFBIG", "EINTR", "EIO", "ENOSPC", "EPERM"),
    "fsync": _SYNC,
    "fdatasync": _SYNC,
    "sync_file_range": ("EINVAL", "EIO", "ENOSPC", "ENOMEM", "ESPIPE"),
    "ftruncate": ("EINTR", "EINVAL", "EIO", "EPERM"),
    "fallocate": ("EINTR", "EIO", "ENOSPC", "EOPNOTSUPP"),
    "lseek": ("EINVAL", "EIO", "ENXIO", "EOVERFLOW", "ESPIPE"),
    "fadvise64": ("EINVAL", "ESPIPE"),
    "fcntl": ("EINVAL", "EMFILE", "EPERM"),
    "fchmod": ("EIO", "EPERM", "EROFS"),
    "close": ("EDQUOT", "EINTR", "EIO", "ENOSPC"),
    "getdents64": ("EIO", "ENOENT", "ENOMEM"),
    "readlink": ("EACCES", "EINVAL", "EIO"),
    "unlink": ("EACCES", "EBUSY", "EIO", "EPERM", "EROFS"),
    "rename": ("EACCES", "EBUSY", "EIO", "ENOSPC", "EROFS"),
    "linkat": ("EACCES", "EEXIST", "EIO", "ENOENT", "ENOSPC", "EPERM", "EXDEV"),
    "mkdir": ("EACCES", "EDQUOT", "EEXIST", "EIO", "EMLINK", "ENOENT", "ENOSPC", "EROFS"),
    "statfs": ("EIO", "ENOMEM"),
    "ioctl": ("EBUSY", "EINVAL", "EIO", "ENODEV", "ENOTTY", "EOPNOTSUPP"),
    "mount": ("EACCES", "EBUSY", "EINVAL", "EIO", "ENODEV", "ENOENT", "ENOMEM", "ENOTBLK",
              "ENXIO", "EPERM", "EROFS"),
    "umount2": ("EAGAIN", "EBUSY", "EINVAL", "EIO", "ENOMEM", "EPERM"),
    "inotify_init": ("EMFILE", "ENFILE", "ENOMEM"),
    "inotify_init1": ("EMFILE", "ENFILE", "ENOMEM"),
    "inotify_add_watch": ("EACCES", "ENOENT", "ENOMEM", "ENOSPC"),
    "inotify_rm_watch": ("EINVAL",),
    "select": ("EINTR", "ENOMEM"),
    "pselect6": ("EINTR", "ENOMEM"),
    "pipe": ("EMFILE", "ENFILE"),
    "pipe2": ("EMFILE", "ENFILE"),
    "shmget": ("EACCES", "EINVAL", "ENFILE", "ENOENT", "ENOMEM", "ENOSPC"),
    "shmat": ("EACCES", "EINVAL", "ENOMEM"),
    "shmctl": ("EACCES", "EINVAL", "EPERM"),
    "semget": ("EACCES", "EINVAL", "ENOENT", "ENOMEM", "ENOSPC"),
    "shmdt": ("EINVAL",),
    "semop": ("EACCES", "EINTR", "EINVAL", "ENOMEM"),
    "semctl": ("EACCES", "EINVAL", "EPERM"),
}

_LIKE = {
    "pread64": "read", "readv": "read",
    "pwrite64": "write", "writev": "write",
    "readlinkat": "readlink", "unlinkat": "unlink", "rmdir": "unlink",
    "semtimedop": "semop",
    "renameat": "rename", "renameat2": "rename", "mkdirat": "mkdir", "fstatfs": "statfs",
}

_LOOKS = ("stat", "lstat", "fstat", "newfstatat", "statx", "access", "faccessat", "faccessat2")

# What does not pass: every later call of the kind for the same file fails as well.
_LASTING = {"read": ("EIO",), "write": ("EIO", "ENOSPC"), "fsync": ("EIO",)}

# The end of the road itself: nothing examines its result, and nothing comes after it.
_NEVER = ("reboot",)


def _is_believable(call, name):
    """That a package of an earlier crash is not there would be a lie, not a failure."""
    return not (name == "ENOENT" and call.result == 0 and call.file.endswith(".cdp"))


def failures_of(call):
    """What can happen to this call of the road, as words for the injector's option."""
    name = _LIKE.get(call.name, call.name)
    if name in _NEVER:
        return []
    if name in _LOOKS:
        names = [name for name in _LOOK if _is_believable(call, name)]
    elif name in ("open", "openat", "creat"):
        names = _MAKE if call.creates else _OPEN
    else:
        names = _FAILURES[name]
    # What it answers anyway is no failure.
    words = [str(number) for number in (getattr(errno, name) for name in names)
             if number != -call.result]
    if call.name in ("read", "write") and call.result > 1:
        words.append(SHORT)
    if call.name == "read" and call.result > 0:
        words.append(END)
    return words + [f"{getattr(errno, name)}{LASTING}" for name in _LASTING.get(call.name, ())]


def in_words(what):
    """A failure as people read it."""
    if what in (SHORT, END):
        return {SHORT: "half done", END: "end of file"}[what]
    lasting = what.endswith(LASTING)
    return errno.errorcode[int(what.rstrip(LASTING))] + (" lasting" if lasting else "")
