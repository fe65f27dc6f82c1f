#!/usr/bin/python3
"""An FTP server of one folder, for end-to-end tests: ftp_server.py FOLDER [BYTES_PER_SECOND].

Prints its port once it listens on loopback. User "anna", password "secret". With BYTES_PER_SECOND it
sends and takes files no faster. With "silent" in its place it takes connections and says nothing.
"""
import socket
import sys


def serve_silence():
    listening = socket.create_server(("127.0.0.1", 0))
    print(listening.getsockname()[1], flush=True)
    taken = []
    while True:
        taken.append(listening.accept())


def serve(folder, bytes_per_second):
    from pyftpdlib.authorizers import DummyAuthorizer
    from pyftpdlib.handlers import FTPHandler, ThrottledDTPHandler
    from pyftpdlib.log import config_logging
    from pyftpdlib.servers import FTPServer

    config_logging(level="ERROR")
    authorizer = DummyAuthorizer()
    authorizer.add_user("anna", "secret", folder, perm="elradfmwMT")
    handler = FTPHandler
    handler.authorizer = authorizer
    handler.use_gmt_times = False
    if bytes_per_second > 0:
        handler.dtp_handler = ThrottledDTPHandler
        ThrottledDTPHandler.read_limit = bytes_per_second
        ThrottledDTPHandler.write_limit = bytes_per_second
    server = FTPServer(("127.0.0.1", 0), handler)
    print(server.address[1], flush=True)
    server.serve_forever()


if __name__ == "__main__":
    speed = sys.argv[2] if len(sys.argv) > 2 else "0"
    if speed == "silent":
        serve_silence()
    else:
        serve(sys.argv[1], int(speed))
