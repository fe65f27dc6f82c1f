#!/usr/bin/python3
"""An FTP server that has one folder of COUNT files and sends its listing as fast as it is taken:
listing_server.py COUNT. Prints its port once it listens on loopback."""
import re
import socket
import sys
import threading


def listing(count):
    line = "-rw-r--r--   1 anna     users        4096 Nov 22 10:{:02d} entry number {:07d}.txt\r\n"
    return "".join(line.format(number % 60, number) for number in range(count)).encode()


class Session:
    def __init__(self, control, data):
        self.control = control
        self.data = data
        self.target = None

    def say(self, line):
        self.control.sendall((line + "\r\n").encode())

    def send_listing(self):
        self.say("150 Here it comes")
        connection = socket.create_connection(self.target)
        connection.sendall(self.data)
        connection.close()
        self.say("226 Done")

    def answer(self, command, argument):
        answers = {
            "USER": "331 And the password?",
            "PASS": "230 In",
            "PWD": '257 "/"',
            "TYPE": "200 As you like",
            "CWD": "250 There",
            "QUIT": "221 Goodbye",
        }
        if command == "PORT":
            numbers = [int(number) for number in re.findall(r"\d+", argument)]
            self.target = (".".join(map(str, numbers[:4])), numbers[4] * 256 + numbers[5])
            self.say("200 I shall call")
        elif command == "LIST":
            self.send_listing()
        else:
            self.say(answers.get(command, "502 No"))

    def serve(self):
        self.say("220 Ready")
        with self.control.makefile("r", newline="\n") as commands:
            for line in commands:
                command, _, argument = line.strip().partition(" ")
                self.answer(command, argument)


def main():
    data = listing(int(sys.argv[1]))
    listening = socket.create_server(("127.0.0.1", 0))
    print(listening.getsockname()[1], flush=True)
    while True:
        control, _ = listening.accept()
        threading.Thread(target=Session(control, data).serve, daemon=True).start()


main()
