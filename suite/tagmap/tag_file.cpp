#include "suite/tagmap/tag_file.h"

#include "suite/tagmap/format_tags.h"

namespace tagmap {

namespace {
// The library does not say what it throws. Nearly all of it is for want of
// memory, which a damaged file may ask for at will.
template <typename Work>
Outcome CatchingAll(Outcome failure, Work work) noexcept {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

// Opens a file for one of the changes, does it, and saves.
template <typename Change>
Outcome ChangeTags(const wchar_t* path, DiskChanged diskChanged, Change change) {
    AudioFile file(path, FileStream::Mode::ReadAndWrite, false, diskChanged);
    if (file.Stream().IsTooLarge())
        return Outcome::Refused;
    if (!file.Stream().isOpen())
        return Outcome::CannotOpen;
    const std::unique_ptr<FormatTags> tags = TagsOf(file);
    if (!tags)
        return Outcome::NotAudio;
    if (!tags->CanBeWritten())
        return Outcome::Refused;
    change(*tags);
    return tags->Save() && !file.Stream().Failed() ? Outcome::Done : Outcome::CannotWrite;
}

Outcome ReadFrom(const wchar_t* path, clTagRecord& record) {
    AudioFile file(path, FileStream::Mode::Read, false);
    if (file.Stream().IsTooLarge())
        return Outcome::Refused;
    if (!file.Stream().isOpen())
        return Outcome::CannotOpen;
    const std::unique_ptr<FormatTags> tags = TagsOf(file);
    if (!tags)
        return Outcome::NotAudio;
    tags->Read(record);
    return file.Stream().Failed() ? Outcome::CannotOpen : Outcome::Done;
}
} // namespace

Outcome ReadTags(const wchar_t* path, clTagRecord& record) {
    record.Clear();
    return CatchingAll(Outcome::CannotOpen, [&] { return ReadFrom(path, record); });
}

Outcome SetTags(const wchar_t* path, clTagRecord& changes, Refusals& refused,
                DiskChanged diskChanged) {
    return CatchingAll(Outcome::CannotWrite, [&] {
        return ChangeTags(path, diskChanged, [&](FormatTags& tags) { tags.Set(changes, refused); });
    });
}

Outcome DeleteTags(const wchar_t* path, const NStringList& names, DiskChanged diskChanged) {
    return CatchingAll(Outcome::CannotWrite, [&] {
        return ChangeTags(path, diskChanged, [&](FormatTags& tags) { tags.Delete(names); });
    });
}

} // namespace tagmap
