#!/usr/bin/python3
"""file_server.py DIRECTORY: mounts there a small file system that this process serves.

It speaks the kernel's own protocol for that and needs no library. It has one folder, "folder", with one file, "late", and
keeps nothing in the kernel's caches: as long as the process is stopped nothing there answers. It ends with the process
that started it. Exit status 77: this system does not allow it, as the output says.
"""

import ctypes
import errno
import os
import signal
import struct
import sys

ROOT, FOLDER, FILE = 1, 2, 3
CONTENT = b"late\n"
CHILDREN = {ROOT: {b"folder": FOLDER}, FOLDER: {b"late": FILE}, FILE: {}}
MODES = {ROOT: 0o40755, FOLDER: 0o40755, FILE: 0o100644}

(LOOKUP, FORGET, GETATTR, OPEN, READ, STATFS, RELEASE, FLUSH, INIT, OPENDIR, READDIR, RELEASEDIR, INTERRUPT,
 DESTROY, BATCH_FORGET) = (1, 2, 3, 14, 15, 17, 18, 25, 26, 27, 28, 29, 36, 38, 42)
UNANSWERED = (FORGET, INTERRUPT, BATCH_FORGET)
REQUEST = struct.Struct("=IIQQIIII")
ANSWER = struct.Struct("=IiQ")
PR_SET_PDEATHSIG = 1
MS_NOSUID, MS_NODEV = 2, 4

libc = ctypes.CDLL(None, use_errno=True)


def attributes(node):
    size = len(CONTENT) if node == FILE else 0
    return struct.pack("=6Q10I", node, size, 1, 1600000000, 1600000000, 1600000000, 0, 0, 0, MODES[node], 1, 0, 0, 0,
                       4096, 0)


def look_up(node, body):
    child = CHILDREN[node].get(body.rstrip(b"\0"))
    if child is None:
        return -errno.ENOENT
    return struct.pack("=4Q2I", child, 0, 0, 0, 0, 0) + attributes(child)


def read_file(_, body):
    offset, size = struct.unpack_from("=8xQI", body)
    return CONTENT[offset:offset + size]


def read_folder(node, body):
    offset, size = struct.unpack_from("=8xQI", body)
    answer = b""
    for place, (name, child) in enumerate(CHILDREN[node].items(), 1):
        record = struct.pack("=2Q2I", child, place, len(name), MODES[child] >> 12) + name
        record += bytes(-len(record) % 8)
        if place > offset and len(answer) + len(record) <= size:
            answer += record
    return answer


HANDLERS = {
    INIT: lambda node, body: struct.pack("=4I2H2I2H8I", 7, 31, 65536, 0, 12, 9, 65536, 1, 0, 0, *[0] * 8),
    LOOKUP: look_up,
    GETATTR: lambda node, body: struct.pack("=Q2I", 0, 0, 0) + attributes(node),
    OPEN: lambda node, body: struct.pack("=Q2I", 0, 0, 0),
    OPENDIR: lambda node, body: struct.pack("=Q2I", 0, 0, 0),
    READ: read_file,
    READDIR: read_folder,
    RELEASE: lambda node, body: b"",
    RELEASEDIR: lambda node, body: b"",
    FLUSH: lambda node, body: b"",
    STATFS: lambda node, body: struct.pack("=5Q10I", 1000, 500, 500, 10, 5, 4096, 255, 4096, *[0] * 7),
    DESTROY: lambda node, body: b"",
}


def serve(device):
    while True:
        try:
            request = os.read(device, 1 << 20)
        except OSError as error:
            if error.errno in (errno.EINTR, errno.ENOENT):  # ENOENT: a request was taken back
                continue
            return error.errno != errno.ENODEV  # ENODEV: unmounted
        _, code, number, node = REQUEST.unpack_from(request)[:4]
        if code in UNANSWERED:
            continue
        handler = HANDLERS.get(code)
        answer = handler(node, request[REQUEST.size:]) if handler else -errno.ENOSYS
        status, body = (answer, b"") if isinstance(answer, int) else (0, answer)
        try:
            os.write(device, ANSWER.pack(ANSWER.size + len(body), status, number) + body)
        except OSError as error:
            if error.errno != errno.ENOENT:  # nobody waits for it any more
                raise


def refuse(what, error, refusals):
    """Ends: as not allowed where that is what the system said, else as failed."""
    print(f"{what}: {os.strerror(error)}", flush=True)
    sys.exit(77 if error in refusals else 1)


def is_known():
    with open("/proc/filesystems", encoding="ascii") as kinds:
        return any(line.split()[-1] == "fuse" for line in kinds)


def main():
    # Also while it is stopped.
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)
    try:
        device = os.open("/dev/fuse", os.O_RDWR | os.O_CLOEXEC)
    except OSError as error:
        refuse("/dev/fuse", error.errno,
               (errno.ENOENT, errno.ENXIO, errno.ENODEV, errno.EACCES, errno.EPERM))
    options = f"fd={device},rootmode=40000,user_id={os.getuid()},group_id={os.getgid()}"
    if libc.mount(b"server", sys.argv[1].encode(), b"fuse", MS_NOSUID | MS_NODEV, options.encode()) != 0:
        error = ctypes.get_errno()
        # A kernel that knows this kind of file system says no to the person alone.
        refuse("mount", error, (errno.EPERM, errno.EACCES) if is_known() else (errno.ENODEV,))
    return serve(device)


if __name__ == "__main__":
    sys.exit(main())
