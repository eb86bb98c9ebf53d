"""A stand-in for sway's socket that answers only a given number of requests."""
import socket
import struct
import threading

HEADER = struct.Struct('=6sII')  # magic, length of what follows, type


class MuteSway:
    def __init__(self, machine, answers):
        """Accepts every connection and reads one request from each."""
        self.path = machine.folder('mute-sway')
        self.questions = 0
        self._answers, self._connections = answers, []
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.bind(self.path)
        self._socket.listen()
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self):
        while True:
            connection, _ = self._socket.accept()
            self._connections.append(connection)
            magic, _, kind = HEADER.unpack(connection.recv(HEADER.size))
            self.questions += 1
            if self.questions <= self._answers:
                text = b'[{"success": true}]'
                connection.sendall(HEADER.pack(magic, len(text), kind) + text)
