#include "tagpage/tag_choices.h"

#include "tagpage/genre_list.h"

namespace {
constexpr int LastTrack = 99;
constexpr int OldestYear = 1920;

struct NamedChoices {
    const wchar_t* name;
    TagChoices choices;
};

// Spelt so: wanted; capitals don't count.
constexpr NamedChoices RowsWithChoices[] = {
    {L"tRack", TagChoices::Track},
    {L"yEar", TagChoices::Year},
    {L"gEnre", TagChoices::Genre},
};
} // namespace

// Not the order of the page's fixed rows, and not meant to become it.
const wchar_t TagFieldNames[][TagFieldNameRoom] = {
    L"Artist",       L"Album", L"Title", L"Track", L"Genre",     L"Year",      L"Comment",
    L"Album Artist", L"Band",  L"Disc",  L"Tempo", L"Composer",  L"Conductor", L"Label",
    L"ISRC",         L"UPC",   L"Mood",  L"Style", L"Copyright", L"",
};

TagChoices TagChoicesFor(const NString& name) {
    for (const NamedChoices& row : RowsWithChoices) {
        if (name.Compare(row.name, 0, true) == 0)
            return row.choices;
    }
    return TagChoices::None;
}

void AddChoices(TagChoices which, NStringList& choices) {
    switch (which) {
    case TagChoices::Track:
        AddTrackChoices(choices);
        break;
    case TagChoices::Year: {
        SYSTEMTIME today;
        GetLocalTime(&today);
        AddYearChoices(choices, today);
        break;
    }
    case TagChoices::Genre:
        AddGenreChoices(choices);
        break;
    case TagChoices::None:
        break;
    }
}

void AddTrackChoices(NStringList& choices) {
    for (int track = 1; track <= LastTrack; ++track)
        choices.Add(NString::FromInt(track));
}

void AddYearChoices(NStringList& choices, const SYSTEMTIME& today) {
    for (int year = today.wYear; year >= OldestYear; --year)
        choices.Add(NString::FromInt(year));
}

void AddTagFieldNames(NStringList& choices) {
    for (const auto* name = TagFieldNames; (*name)[0] != 0; ++name)
        choices.Add(*name);
}
