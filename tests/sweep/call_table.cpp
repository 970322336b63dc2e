#include "call_table.h"

#include <cstring>

#include <sys/syscall.h>

const std::vector<CallKind> &callTable()
{
    static const std::vector<CallKind> table{
        {SYS_open, "open", Subject::Path},
        {SYS_openat, "openat", Subject::PathAt},
        {SYS_creat, "creat", Subject::Path},
        {SYS_read, "read", Subject::Descriptor},
        {SYS_readv, "readv", Subject::Descriptor},
        {SYS_pread64, "pread64", Subject::Descriptor},
        {SYS_write, "write", Subject::Descriptor},
        {SYS_writev, "writev", Subject::Descriptor},
        {SYS_pwrite64, "pwrite64", Subject::Descriptor},
        {SYS_fsync, "fsync", Subject::Descriptor},
        {SYS_fdatasync, "fdatasync", Subject::Descriptor},
        {SYS_sync_file_range, "sync_file_range", Subject::Descriptor},
        {SYS_ftruncate, "ftruncate", Subject::Descriptor},
        {SYS_fallocate, "fallocate", Subject::Descriptor},
        {SYS_lseek, "lseek", Subject::Descriptor},
        {SYS_fadvise64, "fadvise64", Subject::Descriptor},
        {SYS_fcntl, "fcntl", Subject::Descriptor},
        {SYS_fchmod, "fchmod", Subject::Descriptor},
        {SYS_close, "close", Subject::Descriptor},
        {SYS_getdents64, "getdents64", Subject::Descriptor},
        {SYS_fstat, "fstat", Subject::Descriptor},
        {SYS_stat, "stat", Subject::Path},
        {SYS_lstat, "lstat", Subject::Path},
        {SYS_newfstatat, "newfstatat", Subject::PathAt},
        {SYS_statx, "statx", Subject::PathAt},
        {SYS_access, "access", Subject::Path},
        {SYS_faccessat, "faccessat", Subject::PathAt},
        {SYS_faccessat2, "faccessat2", Subject::PathAt},
        {SYS_readlink, "readlink", Subject::Path},
        {SYS_readlinkat, "readlinkat", Subject::PathAt},
        {SYS_unlink, "unlink", Subject::Path},
        {SYS_unlinkat, "unlinkat", Subject::PathAt},
        {SYS_rename, "rename", Subject::SecondPath},
        {SYS_renameat, "renameat", Subject::PathToMake},
        {SYS_renameat2, "renameat2", Subject::PathToMake},
        {SYS_linkat, "linkat", Subject::PathToMake},
        {SYS_mkdir, "mkdir", Subject::Path},
        {SYS_mkdirat, "mkdirat", Subject::PathAt},
        {SYS_rmdir, "rmdir", Subject::Path},
        {SYS_statfs, "statfs", Subject::Path},
        {SYS_fstatfs, "fstatfs", Subject::Descriptor},
        {SYS_ioctl, "ioctl", Subject::Descriptor},
        {SYS_mount, "mount", Subject::Always},
        {SYS_umount2, "umount2", Subject::Always},
        {SYS_reboot, "reboot", Subject::Always},
        {SYS_inotify_init, "inotify_init", Subject::Always},
        {SYS_inotify_init1, "inotify_init1", Subject::Always},
        {SYS_inotify_add_watch, "inotify_add_watch", Subject::Always},
        {SYS_inotify_rm_watch, "inotify_rm_watch", Subject::Always},
        {SYS_select, "select", Subject::Always},
        {SYS_pselect6, "pselect6", Subject::Always},
        {SYS_pipe, "pipe", Subject::Always},
        {SYS_pipe2, "pipe2", Subject::Always},
        {SYS_shmget, "shmget", Subject::Always},
        {SYS_shmat, "shmat", Subject::Always},
        {SYS_shmctl, "shmctl", Subject::Always},
        {SYS_semget, "semget", Subject::Always},
        {SYS_shmdt, "shmdt", Subject::Always},
        {SYS_semop, "semop", Subject::Always},
        {SYS_semtimedop, "semtimedop", Subject::Always},
        {SYS_semctl, "semctl", Subject::Always},
    };
    return table;
}

const CallKind *callOfNumber(long number)
{
    for (const CallKind &call : callTable())
        if (call.number == number)
            return &call;
    return nullptr;
}

const CallKind *callOfName(const char *name)
{
    for (const CallKind &call : callTable())
        if (std::strcmp(call.name, name) == 0)
            return &call;
    return nullptr;
}
