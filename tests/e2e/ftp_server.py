#!/usr/bin/python3
"""An FTP server of one folder, for end-to-end tests: ftp_server.py FOLDER [HABIT].

Prints its port once it listens on loopback. User "anna", password "secret". HABIT is one of
    a number        sends and takes files no faster than so many bytes a second
    silent          takes connections and says nothing
    half-listings   sends the first half of each listing, then nothing, and tells that on stderr
    slow-deletion   takes its time over each file that it deletes
Whoever has left is told of on stderr. Names are bytes: those that are no UTF-8 stay what they are.
"""
import itertools
import socket
import sys
import time

SECONDS_PER_DELETION = 0.25


def serve_silence():
    listening = socket.create_server(("127.0.0.1", 0))
    print(listening.getsockname()[1], flush=True)
    taken = []
    while True:
        taken.append(listening.accept())


def tell(what):
    print(what, file=sys.stderr, flush=True)


def handler_class():
    from pyftpdlib.filesystems import AbstractedFS
    from pyftpdlib.handlers import FTPHandler

    class WithHomes(AbstractedFS):
        """Takes a name that begins with a tilde for somebody's home, as many servers do."""

        def ftpnorm(self, ftppath):
            return "/" if ftppath.startswith("~") else super().ftpnorm(ftppath)

    class Handler(FTPHandler):
        abstracted_fs = WithHomes
        use_gmt_times = False
        unicode_errors = "surrogateescape"

        def push(self, text):
            # A reply may hold such a name, too.
            self.push_bytes(text.encode("utf8", self.unicode_errors))

        def push_bytes(self, data):
            super(FTPHandler, self).push(data)

        def on_disconnect(self):
            tell("left")

    return Handler


def limit_speed(handler, bytes_per_second):
    from pyftpdlib.handlers import ThrottledDTPHandler

    handler.dtp_handler = ThrottledDTPHandler
    ThrottledDTPHandler.read_limit = bytes_per_second
    ThrottledDTPHandler.write_limit = bytes_per_second


def halve_listings(handler):
    from pyftpdlib.handlers import DTPHandler

    class Unending(DTPHandler):
        def close_when_done(self):
            tell("half a listing")

    class Halved(handler.abstracted_fs):
        def format_list(self, basedir, listing, ignore_err=True):
            lines = list(super().format_list(basedir, listing, ignore_err))
            text = b"".join(itertools.islice(lines, len(lines) // 2 + 1))
            yield text[:-10]

    handler.dtp_handler = Unending
    handler.abstracted_fs = Halved


def slow_deletion(handler):
    delete = handler.ftp_DELE

    def delete_slowly(self, path):
        time.sleep(SECONDS_PER_DELETION)
        return delete(self, path)

    handler.ftp_DELE = delete_slowly


def serve(folder, habit):
    from pyftpdlib.authorizers import DummyAuthorizer
    from pyftpdlib.log import config_logging
    from pyftpdlib.servers import FTPServer

    config_logging(level="ERROR")
    authorizer = DummyAuthorizer()
    authorizer.add_user("anna", "secret", folder, perm="elradfmwMT")
    handler = handler_class()
    handler.authorizer = authorizer
    if habit == "half-listings":
        halve_listings(handler)
    elif habit == "slow-deletion":
        slow_deletion(handler)
    elif int(habit) > 0:
        limit_speed(handler, int(habit))
    server = FTPServer(("127.0.0.1", 0), handler)
    print(server.address[1], flush=True)
    server.serve_forever()


if __name__ == "__main__":
    habit = sys.argv[2] if len(sys.argv) > 2 else "0"
    if habit == "silent":
        serve_silence()
    else:
        serve(sys.argv[1], habit)
