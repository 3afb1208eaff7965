#!/usr/bin/python3
"""frames.py DEVICE leave|strip: sends frames that scapy has made, tagged in many ways, and compares what comes back
with what scapy says it should be, byte for byte.

At the other end of the wire every frame is sent back by the endpoint of the VLAN that it came to; frames without a
customer's tag come to VLAN 7. Exit status 0: all were right; 1: not, said on standard error; 77: no scapy here.
"""
import logging
import random
import sys

logging.getLogger("scapy.runtime").setLevel(logging.ERROR)
try:
    from scapy.config import conf
    from scapy.layers.l2 import Dot1AD, Dot1Q, Ether
    from scapy.packet import Raw
except ImportError:
    sys.exit(77)

DEFAULT_VLAN = 7
TYPE = 0x88B5  # for local experiments
SHORTEST = 2  # Linux takes a tag of nothing that is shorter
BATCH = 32


def tagged(tags, size):
    """The frame with those tags, the outermost first."""
    frame = Ether(dst="00:00:5e:00:53:01", src="00:00:5e:00:53:02", type=TYPE)
    for index, (kind, fields) in enumerate(tags):
        frame = frame / kind(type=TYPE, **fields)
        before = frame.getlayer(index)
        before.type = 0x8100 if kind is Dot1Q else 0x88A8
    return bytes(frame / Raw(bytes(n * 7 % 256 for n in range(size))))


def expected(tags, size, leave):
    """What comes back."""
    if leave:
        return tagged(tags, size)
    if tags and tags[0][0] is Dot1Q:
        vlan, inner = tags[0][1]["vlan"], tags[1:]
    else:
        vlan, inner = DEFAULT_VLAN, tags
    return tagged([(Dot1Q, {"prio": 0, "id": 0, "vlan": vlan})] + inner, size)


def cases():
    """Tags and sizes of payloads."""
    def tag(kind, vlan, prio=0, drop=0):
        return kind, {"prio": prio, "id": drop, "vlan": vlan}
    for stack in ([], [tag(Dot1Q, 9)], [tag(Dot1Q, 9, 7, 1)], [tag(Dot1Q, 0)], [tag(Dot1Q, 0, 5)], [tag(Dot1Q, 4095)],
                  [tag(Dot1AD, 9)], [tag(Dot1Q, 9), tag(Dot1Q, 10, 3)], [tag(Dot1AD, 9), tag(Dot1Q, 10)],
                  [tag(Dot1Q, 9), tag(Dot1AD, 10)]):
        for size in (SHORTEST, 46, 1500, 8900):
            yield stack, size
    drawn = random.Random(1)
    for _ in range(400):
        stack = [tag(drawn.choice((Dot1Q, Dot1Q, Dot1AD)), drawn.randrange(4096), drawn.randrange(8), drawn.randrange(2))
                 for _ in range(drawn.randrange(4))]
        yield stack, drawn.randrange(SHORTEST, 1480)


def main():
    device, leave = sys.argv[1], sys.argv[2] == "leave"
    socket = conf.L2socket(iface=device)
    socket.ins.settimeout(30)
    wrong = total = 0

    def received():
        # The socket hears also what it sends.
        while True:
            _, frame, _ = socket.recv_raw()
            if frame is not None and not frame.startswith(b"\xff"):
                return frame

    all_cases = list(cases())
    for start in range(0, len(all_cases), BATCH):
        batch = all_cases[start:start + BATCH]
        for tags, size in batch:
            socket.outs.send(tagged(tags, size))
        for tags, size in batch:
            total += 1
            want, got = expected(tags, size, leave), received()
            wrong += got != want
            if got != want and wrong < 5:
                print(f"{tags} and {size} bytes:\n  {want[:40].hex()} {len(want)} was expected,\n"
                      f"  {got[:40].hex()} {len(got)} came", file=sys.stderr)
    print(f"{total} frames, {wrong} wrong")
    return wrong != 0


sys.exit(main())
