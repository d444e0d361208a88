#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A peer reads CAN databases as zelctl does: the databases of this folder, read by canmatrix (Debian:
python3-canmatrix), have the same messages, signals and tables of values, and 10,000 random frames of
each have the same values. What differs stands in EXPLAINED with its reason; what is explained there
and does not differ is a fault, too.

peer.py ZELCTL [DATABASE]..."""

import glob
import io
import json
import logging
import math
import os
import random
import re
import subprocess
import sys
import tempfile

DEBIAN = "/usr/bin/python3"
try:
    logging.disable(logging.CRITICAL)
    import canmatrix.formats
except ImportError:
    if os.path.realpath(sys.executable) != os.path.realpath(DEBIAN) and os.path.exists(DEBIAN):
        os.execv(DEBIAN, [DEBIAN, "-B", *sys.argv])
    sys.exit("peer: NOT COMPARED: python3-canmatrix is not installed (scripts/setup.sh ci does)")

FRAMES = 10_000
SEED = 16

# What differs ("database: place: field", a pattern) and why.
EXPLAINED = [
    ("attributes: Status: cycle",
     "the peer has attributes of messages without the default of their definition"),
    ("canonical: State: cycle", "the peer has cycle times of whole milliseconds"),
    ("(further|canonical): VECTOR__INDEPENDENT_SIG_MSG: message",
     "a list of messages has none that only stores signals of no message; it is kept as a statement"),
    ("longnames: (nodes|.*: senders|.*: receivers)",
     "the peer gives nodes their long names in its list of nodes alone, and lists those that send "
     "by their short names once more"),
]

# Messages of which no frames are compared, and why.
NOT_DECODED = {
    "nested: TwoSwitches": "the peer follows one multiplexor of those that stand side by side",
}


# What the peer can not read, what it is given instead, and why.
REWRITTEN = [
    (b'"VFrameFormat" BO_ 513 "StandardCAN_FD"', b'"VFrameFormat" BO_ 513 14',
     "ends at an enumerated attribute that is written by its text"),
]


def read_peer(path):
    with open(path, "rb") as file:
        contents = file.read()
    try:
        contents.decode("utf-8")
        encoding = "utf-8"
    except UnicodeDecodeError:
        encoding = "cp1252"  # the peer has to be told
    for text, replacement, _ in REWRITTEN:
        contents = contents.replace(text, replacement)
    return canmatrix.formats.load_flat(io.BytesIO(contents), "dbc", dbcImportEncoding=encoding,
                                       dbcImportCommentEncoding=encoding)


def read_ours(zelctl, path):
    done = subprocess.run([zelctl, "--json", "labels", "show", path], capture_output=True,
                          text=True, timeout=60, check=False)
    if done.returncode > 1:
        sys.exit(f"peer: {path}: {done.stdout}{done.stderr}")
    return json.loads(done.stdout)


def type_of(signal):
    if signal.is_float:
        return {32: "FLOAT", 64: "DOUBLE"}[signal.size]
    return "SIGNED_INT" if signal.is_signed else "UNSIGNED_INT"


def ranges_of(signal):
    """Values of the multiplexor with which the signal is there."""
    if signal.mux_val_grp:
        return sorted([int(first), int(last)] for first, last in signal.mux_val_grp)
    return [] if signal.mux_val is None else [[signal.mux_val, signal.mux_val]]


def merged(ranges):
    """Ranges that touch are one."""
    result = []
    for first, last in ranges:
        if result and first <= result[-1][1] + 1:
            result[-1][1] = max(last, result[-1][1])
        else:
            result.append([first, last])
    return result


def multiplexor_of(frame, signal):
    if not ranges_of(signal):
        return ""
    if signal.muxer_for_signal:
        return signal.muxer_for_signal
    return next((other.name for other in frame.signals if other.is_multiplexer), "")


def peer_signal(frame, signal):
    return {"name": signal.name, "start": signal.get_startbit(bit_numbering=1),
            "length": signal.size,
            "order": "LITTLE_ENDIAN" if signal.is_little_endian else "BIG_ENDIAN",
            "type": type_of(signal), "factor": float(signal.factor),
            "offset": float(signal.offset), "minimum": float(signal.min),
            "maximum": float(signal.max), "unit": signal.unit,
            "receivers": sorted(signal.receivers), "comment": signal.comment or "",
            "multiplexor": multiplexor_of(frame, signal), "selectedBy": merged(ranges_of(signal)),
            "labels": {str(raw): label for raw, label in signal.values.items()}}


def our_signal(signal):
    return {**{name: signal[name] for name in ["name", "start", "length", "order", "unit",
                                               "comment", "labels"]},
            **{name: float(signal[name]) for name in ["factor", "offset", "minimum", "maximum"]},
            "type": signal["type"].replace("ENUM", "UNSIGNED_INT"),
            "receivers": sorted(signal["receivers"]),
            "multiplexor": signal.get("multiplexor", ""),
            "selectedBy": signal.get("selectedBy", [])}


def peer_message(frame):
    return {"name": frame.name, "length": frame.size, "fd": bool(frame.is_fd),
            "senders": sorted(frame.transmitters), "comment": frame.comment or "",
            "cycle": frame.cycle_time / 1000.0}


def our_message(message):
    return {"name": message["name"], "length": message["length"], "fd": message["fd"],
            "senders": sorted(message["senders"]), "comment": message["comment"],
            "cycle": message.get("cycleTime", 0.0)}


def differing(place, ours, peers):
    for field, value in ours.items():
        if value != peers[field]:
            yield f"{place}: {field}", f"{value!r}, the peer: {peers[field]!r}"


def peer_list(matrix):
    return {"nodes": sorted(ecu.name for ecu in matrix.ecus),
            "valueTables": {name: {str(raw): label for raw, label in table.items()}
                            for name, table in matrix.value_tables.items()}}


def our_list(answer):
    return {"nodes": sorted(answer["nodes"]), "valueTables": answer["valueTables"]}


def key_of(message):
    return message["id"], message["idBits"] == 29


def compare_lists(name, messages, frames):
    """Pairs of a place with its field, and what differs there."""
    for key in sorted(set(frames) - set(messages)):
        yield f"{name}: {frames[key].name}: message", "missing; the peer has it"
    for key, message in messages.items():
        place = f"{name}: {message['name']}"
        if key not in frames:
            yield f"{place}: message", "the peer does not have it"
            continue
        frame = frames[key]
        yield from differing(place, our_message(message), peer_message(frame))
        ours = [our_signal(signal) for signal in message["signals"]]
        peers = [peer_signal(frame, signal) for signal in frame.signals]
        if [signal["name"] for signal in ours] != [signal["name"] for signal in peers]:
            yield (f"{place}: signals", f"{[signal['name'] for signal in ours]}, the peer: "
                                        f"{[signal['name'] for signal in peers]}")
            continue
        for our, peer in zip(ours, peers):
            yield from differing(f"{place}/{our['name']}", our, peer)


def make_frames(frames, source):
    """Random frames of a list; every second has small numbers, with which more is selected."""
    keys = sorted(key for key, frame in frames.items() if 0 < frame.size)
    for _ in range(FRAMES):
        key = source.choice(keys)
        highest = source.choice([255, 15, 3])
        yield key, bytes(source.randint(0, 255 if source.random() < 0.5 else highest)
                         for _ in range(frames[key].size))


def write_log(path, made):
    with open(path, "w", encoding="utf-8") as file:
        for number, ((identifier, extended), payload) in enumerate(made):
            digits = f"{identifier:0{8 if extended else 3}X}"
            mark = "#" if len(payload) <= 8 else "##1"
            file.write(f"({number}.000000) can0 {digits}{mark}{payload.hex().upper()}\n")


def is_same_value(ours, signal, raw):
    """15 digits of the greater part of the sum, as the peer adds decimal numbers."""
    value = float(signal.raw2phys(raw))
    if not math.isfinite(value):
        return ours is None
    greatest = max(abs(value), abs(float(signal.offset)), abs(float(raw) * float(signal.factor)))
    return ours is not None and abs(ours - value) <= 1e-14 * greatest


def compare_frame(place, ours, peers):
    ours = {signal["name"]: signal for signal in ours}
    if set(ours) != set(peers):
        yield (f"{place}: selected", f"{sorted(ours)}, the peer: {sorted(peers)}")
        return
    for name, decoded in peers.items():
        our, raw = ours[name], decoded.raw_value
        if not decoded.signal.is_float and our["raw"] != raw:
            yield f"{place}/{name}: raw", f"{our['raw']}, the peer: {raw}"
        if not is_same_value(our["value"], decoded.signal, raw):
            yield f"{place}/{name}: value", f"{our['value']}, the peer: {decoded.phys_value}"
        if not decoded.signal.is_float and our["text"] != decoded.signal.values.get(raw, ""):
            yield (f"{place}/{name}: text",
                   f"{our['text']!r}, the peer: {decoded.signal.values.get(raw, '')!r}")


def compare_values(zelctl, name, path, frames):
    made = list(make_frames(frames, random.Random(f"{SEED} {name}")))
    with tempfile.TemporaryDirectory() as folder:
        log = os.path.join(folder, "random.log")
        write_log(log, made)
        done = subprocess.run([zelctl, "--json", "labels", "decode", "--list", path, log],
                              capture_output=True, text=True, timeout=300, check=False)
    lines = done.stdout.splitlines()
    if len(lines) != len(made):
        yield f"{name}: frames", f"{len(lines)} of {len(made)}: {done.stderr}"
        return
    for (key, payload), line in zip(made, lines):
        answer = json.loads(line)
        place = f"{name}: {answer['message']}"
        if (answer["id"], answer["extended"]) != key:
            yield f"{place}: id", str(answer["id"])
            continue
        if place not in NOT_DECODED:
            yield from compare_frame(place, answer["signals"], frames[key].decode(payload))


def compare(zelctl, path):
    name = os.path.splitext(os.path.basename(path))[0]
    answer, matrix = read_ours(zelctl, path), read_peer(path)
    messages = {key_of(message): message for message in answer["messages"]}
    frames = {(frame.arbitration_id.id, bool(frame.arbitration_id.extended)): frame
              for frame in matrix.frames}
    found = dict(differing(name, our_list(answer["list"]), peer_list(matrix)))
    found.update(compare_lists(name, messages, frames))
    common = {key: frame for key, frame in frames.items() if key in messages}
    for place, what in compare_values(zelctl, name, path, common):
        found.setdefault(place, what)
    print(f"peer: {name}: {len(messages)} messages, "
          f"{sum(len(message['signals']) for message in messages.values())} signals, "
          f"{FRAMES} frames: {len(found)} differences")
    return found


def main():
    zelctl, *paths = sys.argv[1:]
    if not paths:
        paths = sorted(glob.glob(os.path.join(os.path.dirname(os.path.abspath(__file__)),
                                              "databases/*.dbc")))
    found = {}
    for path in paths:
        found.update(compare(os.path.abspath(zelctl), path))
    explained = {place: reason for place in found for pattern, reason in EXPLAINED
                 if re.fullmatch(pattern, place)}
    for place, what in found.items():
        if place not in explained:
            print(f"peer: {place}: {what}")
    stale = [pattern for pattern, _ in EXPLAINED
             if not any(re.fullmatch(pattern, place) for place in found)]
    for pattern in stale if len(sys.argv) == 2 else []:
        print(f"peer: explained, but no difference: {pattern}")
        return 1
    for reason in dict.fromkeys(explained.values()):
        print(f"peer: {sum(other == reason for other in explained.values())} explained: {reason}")
    return 1 if len(explained) < len(found) or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
