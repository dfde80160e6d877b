#!/usr/bin/env python3
"""foreign_reader.py tag FILE NAME | cover FILE | audio FILE

What programs that have nothing to do with this suite find in an audio file:
ffprobe and ffmpeg, and exiftool, since these show no pictures of an Ogg FLAC, no
APE tag of an MP3, and no second value of an MP4 file.

tag    the texts of that name, one a line
cover  the md5 of the first picture's bytes, or "none"
audio  the md5 of the decoded sound
"""

import hashlib
import json
import subprocess
import sys

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


def show_tag(path, name):
    names = NATIVE_NAMES.get(name, {name})
    texts = [value for found, value in ffprobe_tags(path) if found in names]
    for text in texts + exiftool_tags(path, name):
        print(text)


def show_cover(path):
    picture = (output("ffmpeg", "-v", "error", "-i", path, "-map", "0:v:0", "-c", "copy",
                      "-f", "image2pipe", "-")
               or output("exiftool", "-b", "-Picture", path)
               or output("exiftool", "-b", "-CoverArtFront", path))
    print(hashlib.md5(picture).hexdigest() if picture else "none")


def show_audio(path):
    sys.stdout.buffer.write(output("ffmpeg", "-v", "error", "-i", path, "-map", "0:a",
                                   "-f", "md5", "-"))


def main(question, *arguments):
    {"tag": show_tag, "cover": show_cover, "audio": show_audio}[question](*arguments)


if __name__ == "__main__":
    main(*sys.argv[1:])
