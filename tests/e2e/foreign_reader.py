#!/usr/bin/python3
"""foreign_reader.py tag FILE NAME | cover FILE | audio FILE

What programs that have nothing to do with this suite find in an audio file:
ffprobe and ffmpeg, and exiftool, since these show no pictures of an Ogg FLAC, no
APE tag of an MP3, and no second value of an MP4 file, and mutagen, since neither
shows a second value of an APE item. (mutagen is a package of Debian's Python.)

tag    the texts of that name, one a line
cover  the md5 of the first picture's bytes, or "none"
audio  the md5 of the decoded sound
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


def exiftool_tags(path, name):
    found = json.loads(output("exiftool", "-json", "-a", "-G4", f"-{name}", path) or "[{}]")
    return [str(value) for key, value in found[0].items() if key != "SourceFile"]


def ape_values(path, name):
    try:
        return list(mutagen.apev2.APEv2(path).get(name, []))
    except mutagen.apev2.APENoHeaderError:
        return []


def show_tag(path, name):
    names = NATIVE_NAMES.get(name, {name})
    texts = [value for found, value in ffprobe_tags(path) if found in names]
    for text in texts + exiftool_tags(path, name) + ape_values(path, name):
        print(text)


def show_cover(path):
    picture = (output("ffmpeg", "-v", "error", "-i", path, "-map", "0:v:0", "-c", "copy",
                      "-f", "image2pipe", "-")
               or output("exiftool", "-b", "-Picture", path)
               or output("exiftool", "-b", "-CoverArtFront", path))
    print(hashlib.md5(picture).hexdigest() if picture else "none")


def without_tags_at_end(data):
    """MP3 frames: with a tag behind them ffmpeg takes the length in the first
    frame for wrong, and decodes another number of samples."""
    if data[-128:-125] == b"TAG":
        data = data[:-128]
    if data[-32:-24] == b"APETAGEX":
        has_header = data[-9] & 0x80
        data = data[:-(int.from_bytes(data[-20:-16], "little") + (32 if has_header else 0))]
    return data


def show_audio(path):
    command = ("ffmpeg", "-v", "error", "-i", "pipe:0" if path.endswith(".mp3") else path,
               "-map", "0:a", "-f", "md5", "-")
    with open(path, "rb") as file:
        frames = without_tags_at_end(file.read())
    done = subprocess.run(command, input=frames if path.endswith(".mp3") else b"",
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    sys.stdout.buffer.write(done.stdout)


def main(question, *arguments):
    {"tag": show_tag, "cover": show_cover, "audio": show_audio}[question](*arguments)


if __name__ == "__main__":
    main(*sys.argv[1:])
