#!/usr/bin/env python3
"""make.py: writes eth1.pcap and eth2.pcap beside itself, the captures that ./run shows with config.json.

Two ports, three VLANs: VLAN 1 untagged on eth1, VLAN 20 untagged on eth2, VLAN 10 tagged on both.
"""
import pathlib
import struct

BEGIN = 1767268800  # 2026-01-01 12:00:00 UTC


def frame(host, vlan=None):
    """A frame of 64 bytes to everybody; vlan: what its tag says."""
    source = bytes([0, 0, 0x5E, 0, 0x53, host])
    tag = b'' if vlan is None else struct.pack('>HH', 0x8100, vlan)
    return (b'\xff' * 6 + source + tag + b'\x08\x00').ljust(64, b'\0')


def written(name, frames):
    """frames: seconds after BEGIN, bytes."""
    out = struct.pack('<IHHiIII', 0xA1B2C3D4, 2, 4, 0, 0, 65535, 1)
    for second, data in frames:
        out += struct.pack('<IIII', BEGIN + second, 0, len(data), len(data)) + data
    (pathlib.Path(__file__).parent / name).write_bytes(out)


written('eth1.pcap', [
    (0, frame(0x11)),          # VLAN 1
    (1, frame(0x12, 10)),
    (2, frame(0x13, 10)),      # will be seen on eth2, and here again: two moves
    (3, frame(0x01, 10)),      # configured on eth2: stays there
    (4, frame(0x14, 20)),      # VLAN 20 is not on eth1
    (40, frame(0x13, 10)),
    (50, frame(0x11)),
    (51, frame(0x12, 10)),
])
written('eth2.pcap', [
    (5, frame(0x15)),          # VLAN 20
    (6, frame(0x16, 10)),      # not seen again: ages out
    (20, frame(0x13, 10)),
    (30, frame(0x17, 0)),      # only a priority: VLAN 20
    (60, frame(0x15)),
    (90, frame(0x13, 20)),     # another VLAN, another entry
])
