#!/usr/bin/python3
"""foreign_reader.py FILE QUESTION...

What programs that have nothing to do with this suite find in an audio file:
ffprobe and ffmpeg, and exiftool, since these show no pictures of an Ogg FLAC, no
APE tag of an MP3, and no second value of an MP4 file, and mutagen, since neither
shows a second value of an APE item. (mutagen is a package of Debian's Python.)

Each answer is a line "QUESTION: ANSWER". The questions:

audio          the md5 of the decoded sound
cover          the md5 of the first picture's bytes, or "none"
anything else  the texts of the element of that name, none or several
"""

import hashlib
import json
import subprocess
import sys

import mutagen.apev2

# Where ffprobe hands on the format's own name.
NATIVE_NAMES = {
    "artist": {"artist", "author"},
    "composer": {"composer", "tcm", "imus", "wm/composer"},
    "title": {"title"},
    "album": {"album"},
}


def output(*command):
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=False)
    return done.stdout


def ffprobe_tags(path):
    found = json.loads(output("ffprobe", "-v", "error", "-show_entries",
                              "format_tags:stream_tags", "-of", "json", path) or "{}")
    sections = [found.get("format", {})] + found.get("streams", [])
    return [(name.lower(), value) for section in sections
            for name, value in section.get("tags", {}).items()]


def exiftool_tags(path, names):
    """The names of what it finds have the number of a copy in front."""
    found = json.loads(output("exiftool", "-json", "-a", "-G4", *(f"-{name}" for name in names),
                              path) or "[{}]")
    return [(key.rpartition(":")[2].lower(), str(value)) for key, value in found[0].items()]


def ape_tags(path):
    try:
        return [(name.lower(), value) for name, values in mutagen.apev2.APEv2(path).items()
                if values.kind == mutagen.apev2.TEXT for value in values]
    except mutagen.apev2.APENoHeaderError:
        return []


def find_texts(path, names):
    """Of each name, what was found."""
    if not names:
        return {}
    ffprobe = ffprobe_tags(path)
    others = exiftool_tags(path, names) + ape_tags(path)
    return {name: [value for found, value in ffprobe if found in NATIVE_NAMES.get(name, {name})]
                  + [value for found, value in others if found == name]
            for name in names}


def find_cover(path):
    picture = (output("ffmpeg", "-v", "error", "-i", path, "-map", "0:v:0", "-c", "copy",
                      "-f", "image2pipe", "-")
               or output("exiftool", "-b", "-Picture", "-CoverArtFront", path))
    return hashlib.md5(picture).hexdigest() if picture else "none"


def without_tags_at_end(data):
    """MP3 frames: with a tag behind them ffmpeg takes the length in the first
    frame for wrong, and decodes another number of samples."""
    if data[-128:-125] == b"TAG":
        data = data[:-128]
    if data[-32:-24] == b"APETAGEX":
        has_header = data[-9] & 0x80
        data = data[:-(int.from_bytes(data[-20:-16], "little") + (32 if has_header else 0))]
    return data


def find_audio(path):
    command = ("ffmpeg", "-v", "error", "-i", "pipe:0" if path.endswith(".mp3") else path,
               "-map", "0:a", "-f", "md5", "-")
    with open(path, "rb") as file:
        frames = without_tags_at_end(file.read())
    done = subprocess.run(command, input=frames if path.endswith(".mp3") else b"",
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    return done.stdout.decode().strip()


def main(path, *questions):
    not_texts = {"audio": find_audio, "cover": find_cover}
    texts = find_texts(path, [name for name in questions if name not in not_texts])
    for question in questions:
        answers = texts[question] if question in texts else [not_texts[question](path)]
        for line in (line for answer in answers for line in answer.splitlines()):
            print(f"{question}: {line}")


if __name__ == "__main__":
    main(*sys.argv[1:])
