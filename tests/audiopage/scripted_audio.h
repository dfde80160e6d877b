#pragma once

#include "codec/tag_record.h"
#include "foundation/nfile.h"
#include "tests/audiopage/plugins/scripted_file.h"

#include <cstring>

// An "audio file" for the tests' decoder: set what it is to say, then write it.
class ScriptedAudio {
public:
    ScriptedFile says;
    clTagRecord tags;
    clTagRecord tech;

    void Tag(const wchar_t* name, const wchar_t* value) { tags.Add(name, value); }

    // The records' sizes are told as they are, plus what `says` has in place
    // of them: a lie is a difference.
    void Write(const NString& path) {
        NBuffer tagBytes;
        tags.Serialise(tagBytes);
        NBuffer techBytes;
        tech.Serialise(techBytes);
        ScriptedFile script = says;
        script.tagBytes = tagBytes.Size;
        script.techBytes = techBytes.Size;
        script.tagsSize += tagBytes.Size;
        script.techInfoSize += techBytes.Size;
        NFile file(path, GENERIC_WRITE, CREATE_ALWAYS, false, true);
        file.Write(&script, sizeof(script), NFile::NoSeek);
        file.Write(tagBytes.Data, tagBytes.Size, NFile::NoSeek);
        file.Write(techBytes.Data, techBytes.Size, NFile::NoSeek);
    }
};
