#!/usr/bin/env python3
"""twin.py LEARN [SEED]: the program's table of made captures equals that of these few lines of Python.

Configuration and captures are made at random, wild ones too; the seed is printed. The rules are written down here once
more, from docs/bridging.md; nothing is shared with the program.
"""
import json
import pathlib
import random
import re
import struct
import subprocess
import sys
import tempfile

VLANS = [1, 5, 6, 7, 4094]
PORTS = ['eth1', 'eth3/1', 'lag7']
TPIDS = [0x8100, 0x88A8, 0x9100]


def made_config(r):
    """A configuration as the program reads it."""
    config = {}
    if r.random() < 0.8:
        config['hostAgingTime'] = r.choice([0, 0.25, 2.5, 5, 30, 300])
    ports = config['switchIntfConfig'] = {}
    for port in PORTS:
        if r.random() < 0.3:
            continue
        mode = r.choices(['trunk', 'access', 'dot1qTunnel', 'tap', 'tool', 'routed'], [12, 4, 3, 1, 1, 1])[0]
        p = ports[port] = {
            'switchportModeAndNativeVlan': {'switchportMode': mode, 'nativeVlan': r.choice([0, 1, 1, 5, 6])}}
        if r.random() < 0.1:
            p['macLearningEnabled'] = False
        if r.random() < 0.4:
            p['vlanTpid'] = r.choice(TPIDS + [0])
        if r.random() < 0.3:
            formats = r.sample(['untagged', 'priority', 'singleTagged', 'doubleTagged'], 2)
            p['vlanTagFormatDrop'] = {f: r.random() < 0.5 for f in formats}
    vlans = config['vlanConfig'] = {}
    for vlan in VLANS:
        if r.random() < 0.5:
            continue
        v = vlans[str(vlan)] = {'intf': {}}
        for port in PORTS:
            if r.random() < 0.85:
                direction = r.choices(['ingressAndEgress', 'ingress', 'egress'], [8, 2, 1])[0]
                v['intf'][port] = {'allowedTrafficDirection': direction}
        if r.random() < 0.15:
            v['adminState'] = 'suspended'
        if r.random() < 0.15:
            v['macLearning'] = False
    config['vidToFidMap'] = {str(v): r.choice([5, 100, 65535]) for v in VLANS if r.random() < 0.3}
    config['fdbConfig'] = {
        str(fid): {'configuredHost': {text(host(r.randrange(4))): {
            'intf': r.choice(PORTS), 'entryType': r.choice(['configuredStaticMac', 'configuredSecureMac'])}}}
        for fid in r.sample([1, 5, 6, 100], 2)}
    return config


def host(n):
    return bytes([0, 0, 0x5E, 0, 0x53, n])


def text(address):
    return ':'.join('%02x' % byte for byte in address)


def made_frame(r, numHosts):
    """The bytes of one frame."""
    kind = r.random()
    if kind < 0.9:
        source = host(r.randrange(numHosts))
    else:
        source = r.choice([b'\0' * 6, b'\xff' * 6, b'\x01\0\x5e\0\0\x01', b'\x03\0\0\0\0\x01'])
    tags = b''
    for _ in range(r.choices([0, 1, 2, 3], [3, 10, 3, 1])[0]):
        tpid = r.choices(TPIDS, [8, 2, 1])[0]
        vid = r.choice(VLANS + [0, 4095, 4094])
        tags += struct.pack('>HH', tpid, r.randrange(16) << 12 | vid)
    kind = r.choice([b'\x08\x00', b'\x86\xdd', b'\x00\x26'])
    size = r.choices([60, 14, 64, 1518, 9236], [10, 1, 5, 1, 1])[0]
    return (r.randbytes(6) + source + tags + kind).ljust(size, b'\0')


def made_capture(r, path, numHosts):
    """Writes a capture; returns its records: nanoseconds, captured bytes, and whether the file is cut off behind them."""
    nano = r.random() < 0.5
    unit = 1 if nano else 1000
    out = struct.pack('<IHHiIII', 0xA1B23C4D if nano else 0xA1B2C3D4, 2, 4, 0, 0, 65535, 1)
    time = 1767268800 * 10**9 + r.randrange(3) * 10**9
    records = []
    for _ in range(r.randrange(400)):
        time += r.choice([0, 1, 999, 10**6, 10**8, 3 * 10**8, 10**9, 7 * 10**9]) // unit * unit
        if r.random() < 0.01:
            time -= r.choice([10**9, 40 * 10**9])
        if r.random() < 0.01:
            time += 400 * 10**9
        data = made_frame(r, numHosts)
        kept = data
        if r.random() < 0.1:
            kept = data[:r.choice([0, 6, 13, 14, 15, 17, 18, 40])]
        out += struct.pack('<IIII', time // 10**9, time % 10**9 // unit, len(kept), len(data)) + kept
        records.append((time, kept))
    cut = bool(records) and len(records[-1][1]) > 0 and r.random() < 0.2
    if cut:
        records.pop()
        out = out[:-1]
    path.write_bytes(out)
    return records, cut


class Port:
    def __init__(self, config, name):
        self.name = name
        self.config = config
        self.port = config['switchIntfConfig'].get(name, {})
        both = self.port.get('switchportModeAndNativeVlan', {'switchportMode': 'trunk', 'nativeVlan': 1})
        self.mode, self.native = both['switchportMode'], both['nativeVlan']
        self.tpid = self.port.get('vlanTpid', 0x8100)

    def vlan(self, data):
        """The VLAN of a frame, or why there is none."""
        if self.mode in ('tap', 'tool', 'routed'):
            return 'port does not bridge'
        if len(data) < 14:
            return 'too short'
        word = lambda at: int.from_bytes(data[at:at + 2], 'big')
        vid, form = 0, 'untagged'
        if self.tpid and word(12) == self.tpid:
            if len(data) < 18:
                return 'too short'
            vid = word(14) & 0xFFF
            form = 'doubleTagged' if word(16) in (self.tpid, 0x8100, 0x88A8) else 'singleTagged'
            if vid == 0:
                form = 'priority'
        if self.port.get('vlanTagFormatDrop', {}).get(form):
            return 'tag format dropped'
        if self.mode == 'dot1qTunnel':
            vid = 0
        if vid == 4095:
            return 'VLAN 4095'
        return vid or self.native or 'no native VLAN'

    def refusal(self, vlan, source):
        """Why nothing is learned from that source in that VLAN; None: it is."""
        if self.mode != 'trunk' and vlan != self.native:
            return 'other VLAN on access port'
        v = self.config['vlanConfig'].get(str(vlan))
        if v is not None:
            if v.get('adminState') == 'suspended':
                return 'VLAN suspended'
            member = v['intf'].get(self.name)
            if member is None or member['allowedTrafficDirection'] == 'egress':
                return 'VLAN not on port'
        if not self.port.get('macLearningEnabled', True):
            return 'port does not learn'
        if v is not None and not v.get('macLearning', True):
            return 'VLAN does not learn'
        if source[0] & 1:
            return 'group source'
        return None if any(source) else 'all-zero source'


def expected(config, captures):
    """What the program is to print: entries, totals and reasons."""
    aging = round(config.get('hostAgingTime', 300) * 10**9)
    table, totals, reasons = {}, dict(moves=0, aged=0, frames=0), {}
    for fid, fdb in config['fdbConfig'].items():
        for address, h in fdb['configuredHost'].items():
            table[int(fid), address] = dict(intf=h['intf'], entryType=h['entryType'], moves=0, lastMoveTime=0.0)
    heads, now = {name: 0 for name in captures}, 0
    while True:
        waiting = [n for n in captures if heads[n] < len(captures[n])]
        if not waiting:
            break
        name = min(waiting, key=lambda n: captures[n][heads[n]][0])  # of equal times the first
        time, data = captures[name][heads[name]]
        heads[name] += 1
        totals['frames'] += 1
        now = max(now, time)
        for key in [k for k, e in table.items() if aging and 'seen' in e and now - e['seen'] > aging]:
            del table[key]
            totals['aged'] += 1
        port = Port(config, name)
        vlan = port.vlan(data)
        why = vlan if isinstance(vlan, str) else port.refusal(vlan, data[6:12])
        if why is None:
            fid = config['vidToFidMap'].get(str(vlan), vlan)
            entry = table.setdefault((fid, text(data[6:12])), dict(
                intf=name, entryType='learnedDynamicMac', moves=0, lastMoveTime=time / 1e9, seen=now))
            if 'seen' not in entry:
                why = 'configured host'
            else:
                if entry['intf'] != name:
                    totals['moves'] += 1
                    entry.update(intf=name, moves=entry['moves'] + 1, lastMoveTime=time / 1e9)
                entry['seen'] = now
        if why is not None:
            reasons[why] = reasons.get(why, 0) + 1
    for entry in table.values():
        entry.pop('seen', None)
    return table, totals, reasons


def compared(learn, seed, folder):
    r = random.Random(seed)
    config = made_config(r)
    (folder / 'config.json').write_text(json.dumps(config, indent=1))
    arguments, captures, anyCut = [learn, '--config', folder / 'config.json'], {}, False
    numHosts = r.choice([3, 40])
    for name in r.sample(PORTS, r.randrange(1, 4)):
        path = folder / (name.replace('/', '-') + '.pcap')
        captures[name], cut = made_capture(r, path, numHosts)
        anyCut |= cut
        arguments += ['--capture', f'{name}={path}']
    table, totals, reasons = expected(config, captures)
    for form in ['--json'], []:
        run = subprocess.run(arguments + form, capture_output=True, text=True)
        assert run.returncode == (2 if anyCut else 0), (run.returncode, run.stderr)
        if form:
            got = {(e.pop('fid'), e.pop('address')): e for e in json.loads(run.stdout)['entries']}
            for entry in list(got.values()) + list(table.values()):
                entry['lastMoveTime'] = round(entry['lastMoveTime'], 6)
            assert got == table, differences(got, table)
        else:
            numDatabases = len({fid for fid, _ in table})
            want = (f"Hosts: {len(table)}, VLANs: {numDatabases}, moves: {totals['moves']}, aged out: {totals['aged']}\n"
                    f"Frames read: {totals['frames']}\nFrames not learned from: {sum(reasons.values())}\n")
            assert want in run.stdout, (want, run.stdout)
            told = dict(re.findall(r'^  (\D.*): (\d+)$', run.stdout, re.M))
            assert told == {k: str(v) for k, v in reasons.items()}, (told, reasons)
    return len(table), reasons


def differences(got, want):
    return '\n'.join(f'{k}: got {got.get(k)}, not {want.get(k)}'
                     for k in sorted(set(got) | set(want)) if got.get(k) != want.get(k))


def main():
    learn = sys.argv[1]
    seeds = [int(sys.argv[2])] if len(sys.argv) > 2 else [random.randrange(10**9) for _ in range(25)]
    numHosts, seen = 0, {}
    for seed in seeds:
        with tempfile.TemporaryDirectory() as folder:
            try:
                hosts, reasons = compared(learn, seed, pathlib.Path(folder))
            except AssertionError as e:
                sys.exit(f'seed {seed}: {e}')
        numHosts += hosts
        for why, n in reasons.items():
            seen[why] = seen.get(why, 0) + n
    print(f'{len(seeds)} tables, {numHosts} hosts, as Python has them; seeds {seeds}')
    print('frames not learned from:', ', '.join(f'{why} {n}' for why, n in sorted(seen.items())))


main()
