# An FTP server with one user, on a port that the system chooses:
#
#     one_user.py ADDRESS USER PASSWORD FOLDER
#
# Prints the port once it listens.
import logging
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer

address, user, password, folder = sys.argv[1:]
logging.basicConfig(level=logging.ERROR)


class Handler(FTPHandler):
    authorizer = DummyAuthorizer()
    auth_failed_timeout = 0


Handler.authorizer.add_user(user, password, folder, perm="elradfmwMT")
server = FTPServer((address, 0), Handler)
print(server.address[1], flush=True)
server.serve_forever()
