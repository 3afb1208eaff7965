#!/usr/bin/python3
"""ping.py DEVICE COUNT VLAN=ADDRESS...: asks for the address and pings it in each VLAN, tagging the frames itself;
VLAN 0: without a tag. An address of "-" is asked for where nobody is to answer.

Prints a line for each. Exit status 0: all answered that should, in their VLAN, and nobody else; 1: not.
"""
import socket
import struct
import sys
import time

SOL_PACKET, PACKET_AUXDATA, VLAN_VALID = 263, 8, 16
TAG, ARP, IP = 0x8100, 0x0806, 0x0800
ME, MY_ADDRESS = bytes.fromhex("00005e005301"), bytes([192, 0, 2, 1])
NOBODY = bytes([192, 0, 2, 254])


def checksum(data):
    total = sum(struct.unpack(f"!{len(data) // 2}H", data))
    total = (total & 0xFFFF) + (total >> 16)
    return ~((total & 0xFFFF) + (total >> 16)) & 0xFFFF


class Wire:
    def __init__(self, device):
        self.socket = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(3))
        self.socket.bind((device, 3))
        self.socket.setsockopt(SOL_PACKET, PACKET_AUXDATA, 1)

    def send(self, vlan, target, kind, data):
        tag = struct.pack("!HH", TAG, vlan) if vlan else b""
        self.socket.send((target + ME + tag + struct.pack("!H", kind) + data).ljust(60 + len(tag), b"\0"))

    def received(self, deadline):
        """VLAN, EtherType and contents of a frame to us that was not sent by us; None when none comes in time."""
        while (left := deadline - time.monotonic()) > 0:
            self.socket.settimeout(left)
            try:
                frame, about, _, _ = self.socket.recvmsg(2048, 64)
            except TimeoutError:
                return None
            vlan = None  # no tag at all
            for _, kind, data in about:
                if kind == PACKET_AUXDATA:
                    status, tci = struct.unpack_from("I16xH", data + b"\0\0")[0], struct.unpack_from("H", data, 16)[0]
                    vlan = tci & 0xFFF if status & VLAN_VALID else None
            if frame[:6] == ME:
                return vlan, int.from_bytes(frame[12:14], "big"), frame[14:]
        return None


def asked(wire, vlan, address, patience):
    """The MAC address that has the address in the VLAN."""
    wire.send(vlan, b"\xff" * 6, ARP, struct.pack("!HHBBH", 1, IP, 6, 4, 1) + ME + MY_ADDRESS + bytes(6) + address)
    deadline = time.monotonic() + patience
    while answer := wire.received(deadline):
        if answer[:2] == (vlan, ARP) and answer[2][6:8] == b"\0\2" and answer[2][14:18] == address:
            return answer[2][8:14]
    return None


def pinged(wire, vlan, mac, address, number):
    """Whether one echo comes back as it should."""
    data = b"lumo" * 12
    icmp = struct.pack("!BBHHH", 8, 0, 0, vlan, number) + data
    icmp = icmp[:2] + struct.pack("!H", checksum(icmp)) + icmp[4:]
    header = struct.pack("!BBHHHBBH", 0x45, 0, 20 + len(icmp), number, 0, 64, 1, 0) + MY_ADDRESS + address
    header = header[:10] + struct.pack("!H", checksum(header)) + header[12:]
    wire.send(vlan, mac, IP, header + icmp)
    deadline = time.monotonic() + 5
    while answer := wire.received(deadline):
        found, kind, packet = answer
        if (found, kind) == (vlan, IP) and packet[12:20] == address + MY_ADDRESS and packet[20:22] == b"\0\0":
            whole = packet[20:20 + len(icmp)]
            return checksum(packet[:20]) == 0 and checksum(whole) == 0 and whole[4:] == icmp[4:]
    return False


def main():
    wire, count, failed = Wire(sys.argv[1]), int(sys.argv[2]), False
    for given in sys.argv[3:]:
        vlan, address = given.split("=")
        vlan, where = int(vlan), f"VLAN {vlan}:" if vlan != "0" else "No tag:"
        if address == "-":
            mac = asked(wire, vlan, NOBODY, 0.3)
            failed |= mac is not None
            what = f"for {socket.inet_ntoa(NOBODY)}"
            print(f"{where:<11} {f'nobody answers {what}, as it should be' if mac is None else f'somebody answers {what}'}")
            continue
        bytes_ = socket.inet_aton(address)
        mac = asked(wire, vlan, bytes_, 5)
        numbers = [pinged(wire, vlan, mac, bytes_, n) for n in range(count)] if mac else []
        failed |= sum(numbers) != count
        print(f"{where:<11} {address} is at {mac.hex(':') if mac else 'nobody'}, {sum(numbers)} of {count} echoes came back")
    return failed


sys.exit(main())
