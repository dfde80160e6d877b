#!/usr/bin/python3
"""rows_match_ffprobe.py ROWS_FILE AUDIO_FILE

Compares what the page Audio Properties says of a file with what ffprobe finds:
sample rate, channels, length and bit rate. ROWS_FILE is the output of `shellhost
rows` with the units Hz, plain numbers, hours with milliseconds, and bits a second.
"""

import json
import re
import subprocess
import sys

LENGTH_TOLERANCE = 0.030  # seconds
BIT_RATE_TOLERANCE = 0.02


def read_rows(path):
    with open(path, encoding="utf-8", newline="\n") as file:
        return dict(line.rstrip("\r\n").split("\t", 1) for line in file)


def output(*command):
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          check=True).stdout


def probe(path):
    return json.loads(output(
        "ffprobe", "-v", "error", "-select_streams", "a:0", "-of", "json", "-show_entries",
        "stream=codec_name,sample_rate,channels,duration,bit_rate:format=bit_rate:packet=size",
        path))


def length_of(stream, path):
    """ffprobe finds no duration of a Musepack stream, so its sound is counted."""
    stated = float(stream.get("duration", 0))
    if stated:
        return stated
    frames = len(output("ffmpeg", "-v", "error", "-i", path, "-f", "u8", "-")) / stream["channels"]
    return frames / int(stream["sample_rate"])


def bit_rates_of(found, length):
    """What the stream says of itself, or what its packets add up to: an encoder
    may state the rate that it aimed at, and may put packets before the start. Of
    Monkey's Audio not all packets are found, so that the file's rate stands for
    it."""
    stream = found["streams"][0]
    if stream["codec_name"] == "ape":
        return [int(found["format"]["bit_rate"])]
    rates = [sum(int(packet["size"]) for packet in found["packets"]) * 8 / length]
    if "bit_rate" in stream:
        rates.append(int(stream["bit_rate"]))
    return rates


def digits(text):
    return int(re.sub(r"\D", "", text))


def milliseconds(text):
    hours, minutes, seconds, thousandths = (int(part) for part in re.split(r"\D", text))
    return ((hours * 60 + minutes) * 60 + seconds) * 1000 + thousandths


def main(rows_path, audio_path):
    rows = read_rows(rows_path)
    found = probe(audio_path)
    stream = found["streams"][0]
    length = length_of(stream, audio_path)
    wrong = []

    def compare(name, shown, expected, tolerance=0.0):
        if abs(shown - expected) > tolerance:
            wrong.append(f"{name}: shown {shown}, ffprobe {expected}")

    compare("Sample Rate", digits(rows["Sample Rate"]), int(stream["sample_rate"]))
    compare("Channels", digits(rows["Channels"]), stream["channels"])
    compare("Length", milliseconds(rows["Length"]) / 1000, length, LENGTH_TOLERANCE)
    shown = digits(rows["Bit Rate"])
    # Over the length that is shown, which was compared above.
    nearest = min(bit_rates_of(found, milliseconds(rows["Length"]) / 1000), key=lambda rate: abs(rate - shown))
    compare("Bit Rate", shown, nearest, nearest * BIT_RATE_TOLERANCE)
    for line in wrong:
        print(f"{audio_path}: {line}")
    sys.exit(1 if wrong else 0)


main(*sys.argv[1:])
