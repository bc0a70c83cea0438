"""Peers that no station would choose."""

import random
import select
import socket
import struct
import threading
import time

STATION_PORT, LINK_PORT = 4711, 4712
LINES = [
    b"2026/11/22 10:00:00,0.0.0.0,48.00000,009.00000,Zulu,hello,#O\r",
    b"2026/11/22 10:00:00,127.0.0.99,48.50000,010.00000,Yankee,,#O\r",
    b"2026/11/22 10:00:00,no.such.host.invalid,48.50000,011.00000,Xray,,#O\r",
    b"#O2026/11/22 10:00:00 Connected to Veltrix, Whiskey, 012.00000, 049.00000, 9.9.9, 17\n\r",
    b"2026/11/22 10:00:00,123.45,0000123456,-045.6,000000012,49.00000,12.00000,Whiskey\r",
    b"2026/11/22 10:00:00,,9e999,nan,-,inf,,,,\r",
    b",,,,,,\r", b"\r\r\r\r", b"#O#X#O\r",
]


def junk(dice, size):
    """Lines of the protocol, torn, mixed and spoilt, or mere bytes."""
    text = bytearray()
    while len(text) < size:
        line = bytearray(dice.choice(LINES))
        kind = dice.randrange(5)
        if kind == 0:
            line = line[: dice.randrange(len(line) + 1)]
        elif kind == 1:
            line[dice.randrange(len(line))] = dice.randrange(256)
        elif kind == 2:
            line = bytearray(dice.randbytes(dice.randrange(1, 300)))
        elif kind == 3:
            line = bytearray(bytes([dice.randrange(32, 256)]) * dice.randrange(1, 5000)) + b"\r"
        text += line
    return bytes(text)


def reset(peer):
    """Ends a connection by a reset instead of in order."""
    peer.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    peer.close()


def visit(address, seed, seconds):
    """Some peers of the station at `address`, in a thread of their own, that stay for a while."""
    threading.Thread(target=_visit, args=(address, random.Random(seed), seconds), daemon=True).start()


def _visit(address, dice, seconds):
    peers = []
    for _ in range(dice.choice([1, 3, 25, 80])):
        peer = socket.socket()
        try:
            peer.settimeout(2)
            peer.bind((f"127.0.0.{dice.randrange(60, 100)}", 0))
            peer.connect((address, dice.choice([STATION_PORT, STATION_PORT, LINK_PORT])))
            peer.setblocking(False)
            peers.append(peer)
        except OSError:
            peer.close()
    end = time.monotonic() + seconds
    readers = set(dice.sample(peers, len(peers) // 2))
    while peers and time.monotonic() < end:
        peer = dice.choice(peers)
        try:
            if peer in readers and select.select([peer], [], [], 0)[0] and not peer.recv(65536):
                raise OSError
            peer.send(junk(dice, dice.choice([1, 100, 3000, 100000])))
        except BlockingIOError:
            pass
        except OSError:
            peers.remove(peer)
            peer.close()
        time.sleep(dice.choice([0, 0.01, 0.2]))
    for peer in peers:
        if dice.random() < 0.5:
            reset(peer)
        else:
            peer.close()


def serve(seed):
    """A station that answers whoever calls it with junk; others are told of it."""
    listener = socket.create_server(("127.0.0.99", STATION_PORT))
    threading.Thread(target=_serve, args=(listener, random.Random(seed)), daemon=True).start()


def _serve(listener, dice):
    while True:
        peer, _ = listener.accept()
        try:
            peer.settimeout(1)
            peer.send(junk(dice, dice.choice([1, 200, 20000])))
        except OSError:
            pass
        if dice.random() < 0.5:
            reset(peer)
        else:
            peer.close()
