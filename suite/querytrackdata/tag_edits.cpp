#include "suite/querytrackdata/tag_edits.h"

#include "suite/querytrackdata/audio_file_handle.h"
#include "suite/querytrackdata/disk_change.h"
#include "suite/tagmap/tag_file.h"

namespace {

bool Tell(tagmap::Outcome outcome, const NString& audioFile, ErrorLine& error) {
    switch (outcome) {
    case tagmap::Outcome::Done:
        return true;
    case tagmap::Outcome::CannotOpen:
        return error.Fail(L"cannot read the audio file", audioFile.c_str());
    case tagmap::Outcome::NotAudio:
        return error.Fail(L"no audio file of a known format", audioFile.c_str());
    case tagmap::Outcome::Refused:
        return error.Fail(L"a change could damage an audio file of this kind", audioFile.c_str());
    case tagmap::Outcome::CannotWrite:
        return error.Fail(L"the tag cannot be written", audioFile.c_str());
    }
    return false;
}

bool TellOfCheck(bool good, const NString& audioFile, ErrorLine& error) {
    return good || error.Fail(L"the changed copy did not pass its check", audioFile.c_str());
}

} // namespace

bool ReadTagsOf(const NString& audioFile, NBuffer& reply, ErrorLine& error) {
    NString realPath;
    if (!OpenAudioFile(audioFile.c_str(), GENERIC_READ,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, realPath, error))
        return false;
    clTagRecord record;
    if (!Tell(tagmap::ReadTags(realPath.c_str(), record), audioFile, error))
        return false;
    record.Serialise(reply);
    return reply.Size != 0 || error.Fail(L"the tag is too large", audioFile.c_str());
}

bool SetEdit::IsDone(const wchar_t* file) {
    return tagmap::Holds(file, changes_, refused_);
}

bool SetEdit::Apply(const wchar_t* copy, ErrorLine& error) {
    return Tell(tagmap::SetTags(copy, changes_, refused_, AfterDiskChange), audioFile_, error);
}

bool SetEdit::Check(const wchar_t* original, const wchar_t* copy, ErrorLine& error) {
    return TellOfCheck(tagmap::WasSet(original, copy, changes_, refused_) &&
                           tagmap::SoundsAlike(original, copy),
                       audioFile_, error);
}

bool DeleteEdit::IsDone(const wchar_t* file) {
    return tagmap::LacksAll(file, names_);
}

bool DeleteEdit::Apply(const wchar_t* copy, ErrorLine& error) {
    return Tell(tagmap::DeleteTags(copy, names_, AfterDiskChange), audioFile_, error);
}

bool DeleteEdit::Check(const wchar_t* original, const wchar_t* copy, ErrorLine& error) {
    return TellOfCheck(tagmap::WasDeleted(original, copy, names_) &&
                           tagmap::SoundsAlike(original, copy),
                       audioFile_, error);
}
