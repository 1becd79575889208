"""The errors that each call can report: those of its manual page on Linux, and of POSIX where that lists more."""

import errno

PATH = "EACCES ELOOP ENAMETOOLONG ENOENT ENOTDIR ENOMEM EIO"
CHANGE = "EROFS EPERM ENOSPC EDQUOT EBUSY"
OPEN = f"{PATH} {CHANGE} EEXIST EFBIG EINTR EINVAL EISDIR EMFILE ENFILE ENODEV ENXIO EOPNOTSUPP EOVERFLOW ETXTBSY EAGAIN"
READ = "EAGAIN EBADF EFAULT EINTR EINVAL EIO EISDIR EOVERFLOW ENOBUFS ENOMEM"
WRITE = "EAGAIN EBADF EDESTADDRREQ EDQUOT EFAULT EFBIG EINTR EINVAL EIO ENOSPC EPERM EPIPE ENOBUFS ENXIO"
STAT = f"{PATH} EBADF EFAULT EINVAL EOVERFLOW"
RENAME = f"{PATH} {CHANGE} EEXIST EINVAL EISDIR EMLINK ENOTEMPTY EXDEV EBADF"
LINK = f"{PATH} {CHANGE} EEXIST EINVAL EMLINK EXDEV EBADF"
REMOVE = f"{PATH} EBUSY EPERM EROFS EISDIR EINVAL ENOTEMPTY EBADF"
MODE = f"{PATH} EPERM EROFS EBADF EINTR EINVAL EOPNOTSUPP"

LISTED = {
    "open": OPEN,
    "openat": f"{OPEN} EBADF",
    "fopen": OPEN,
    "fdopen": "EBADF EINVAL EMFILE ENOMEM",
    "read": READ,
    "write": WRITE,
    "writev": WRITE,
    "sendfile": f"{WRITE} EOVERFLOW ESPIPE",
    "close": "EBADF EINTR EIO ENOSPC EDQUOT",
    "fclose": "EBADF EINTR EIO ENOSPC EDQUOT",
    "fsync": "EBADF EINTR EIO ENOSPC EDQUOT EROFS EINVAL",
    "rename": RENAME,
    "renameat": RENAME,
    "renameat2": f"{RENAME} ENOSYS",
    "link": LINK,
    "linkat": LINK,
    "symlink": f"{PATH} {CHANGE} EEXIST EBADF",
    "unlink": REMOVE,
    "unlinkat": REMOVE,
    "rmdir": REMOVE,
    "mkdir": f"{PATH} {CHANGE} EEXIST EMLINK EINVAL EBADF",
    "stat": STAT,
    "lstat": STAT,
    "fstat": STAT,
    "fstatat": STAT,
    "fchmod": MODE,
    "fchmodat": MODE,
    "fchown": MODE,
    "ftruncate": "EACCES EBADF EFBIG EINTR EINVAL EIO EPERM EROFS ETXTBSY",
    "truncate": f"{PATH} EFBIG EINTR EINVAL EISDIR EPERM EROFS ETXTBSY",
    "fallocate": "EBADF EFBIG EINTR EINVAL EIO ENODEV ENOSPC ENOSYS EOPNOTSUPP EPERM ESPIPE",
    "readlink": f"{PATH} EINVAL EBADF",
    "realpath": f"{PATH} EINVAL",
    "access": f"{PATH} EROFS EINVAL EPERM ETXTBSY EBADF",
    "lseek": "EBADF EINVAL ENXIO EOVERFLOW ESPIPE",
    "mmap": "EACCES EAGAIN EBADF EINVAL EMFILE ENFILE ENODEV ENOMEM ENXIO EOVERFLOW EPERM",
    "munmap": "EINVAL",
    "getrandom": "EAGAIN EFAULT EINTR EINVAL ENOSYS",
    "getentropy": "EFAULT EIO ENOSYS",
    "opendir": f"{PATH} EBADF EMFILE ENFILE",
    "fdopendir": "EBADF ENOTDIR ENOMEM EMFILE ENFILE",
    "readdir": "EBADF ENOENT EOVERFLOW EIO",
    "closedir": "EBADF EINTR",
    "isatty": "EBADF EINVAL ENOTTY",
    "ioctl": "EBADF EFAULT EINVAL ENOTTY EINTR EIO",
    "fcntl": "EACCES EAGAIN EBADF EINTR EINVAL EMFILE ENOMEM EPERM",
    "dup2": "EBADF EBUSY EINTR EINVAL EMFILE",
    "poll": "EFAULT EINTR EINVAL ENOMEM EAGAIN",
    "sigaction": "EFAULT EINVAL",
    "sigprocmask": "EFAULT EINVAL",
    "pthread_create": "EAGAIN EINVAL EPERM",
}
MAY_BE_SHORT = ("read", "write", "sendfile", "getrandom")


def actions(call):
    """What can be done to a call, as tests/faults/shim/plan.h writes it."""
    if call == "memory":
        return [f"{errno.ENOMEM}", f"{errno.ENOMEM}+"]
    found = ["short", "short+"] if call in MAY_BE_SHORT else []
    for name in LISTED[call].split():
        number = getattr(errno, name)
        # A call that is interrupted, or has to wait, for ever would be made for ever.
        is_repeated = name == "EINTR" or (name == "EAGAIN" and call in ("read", "write"))
        found += [f"{number}", f"{number}x3"] if is_repeated else [f"{number}", f"{number}+"]
    return found
