#pragma once

#include "suite/decoder/audio_facts.h"
#include "suite/tagmap/audio_file.h"

// What the audio of an open file is, format by format: the library's facts
// where it has them, and what it passes over from the bytes themselves. The
// file is valid, and was opened with the properties of its audio.
//
// Published formats are named in the files of the single readers.
namespace decoder {

using tagmap::AudioFile;

// False if the file has no audio that could be told of.
bool ReadFacts(AudioFile& file, AudioFacts& facts);

void MpegFacts(AudioFile& file, AudioFacts& facts);
void FlacFacts(AudioFile& file, AudioFacts& facts);
void OggFacts(AudioFile& file, AudioFacts& facts);
void Mp4Facts(AudioFile& file, AudioFacts& facts);
void AsfFacts(AudioFile& file, AudioFacts& facts);
void WavFacts(AudioFile& file, AudioFacts& facts);
void AiffFacts(AudioFile& file, AudioFacts& facts);
void MonkeysAudioFacts(AudioFile& file, AudioFacts& facts);
void WavPackFacts(AudioFile& file, AudioFacts& facts);
void MusepackFacts(AudioFile& file, AudioFacts& facts);
void TrueAudioFacts(AudioFile& file, AudioFacts& facts);
void ModuleFacts(AudioFile& file, AudioFacts& facts);

} // namespace decoder
