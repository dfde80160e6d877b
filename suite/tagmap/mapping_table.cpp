#include "suite/tagmap/mapping_table.h"

namespace tagmap {

namespace {
// clang-format off
constexpr clMappingRow Rows[] = {
    // element         ID3v2            Vorbis comment  MP4               ASF                     APE              RIFF INFO
    {L"artist",       L"TPE1",         L"ARTIST",      L"\251ART",        L"Author",              L"Artist",       L"IART"},
    {L"title",        L"TIT2",         L"TITLE",       L"\251nam",        L"Title",               L"Title",        L"INAM"},
    {L"album",        L"TALB",         L"ALBUM",       L"\251alb",        L"WM/AlbumTitle",       L"Album",        L"IPRD"},
    {L"track",        L"TRCK",         L"TRACKNUMBER", L"trkn",           L"WM/TrackNumber",      L"Track",        L"ITRK"},
    {L"disc",         L"TPOS",         L"DISCNUMBER",  L"disk",           L"WM/PartOfSet",        L"Disc",         nullptr},
    {L"genre",        L"TCON",         L"GENRE",       L"\251gen",        L"WM/Genre",            L"Genre",        L"IGNR"},
    {L"year",         L"TDRC",         L"DATE",        L"\251day",        L"WM/Year",             L"Year",         L"ICRD"},
    {L"comment",      L"COMM",         L"COMMENT",     L"\251cmt",        L"Description",         L"Comment",      L"ICMT"},
    {L"album artist", L"TPE2",         L"ALBUMARTIST", L"aART",           L"WM/AlbumArtist",      L"Album Artist", nullptr},
    {L"band",         L"TXXX:BAND",    L"BAND",        L"----:BAND",      L"BAND",                L"Band",         nullptr},
    {L"composer",     L"TCOM",         L"COMPOSER",    L"\251wrt",        L"WM/Composer",         L"Composer",     L"IMUS"},
    {L"conductor",    L"TPE3",         L"CONDUCTOR",   L"----:CONDUCTOR", L"WM/Conductor",        L"Conductor",    nullptr},
    {L"label",        L"TPUB",         L"LABEL",       L"----:LABEL",     L"WM/Publisher",        L"Label",        L"IPUB"},
    // A RIFF "ISRC" means the source of the recording: it is never written.
    {L"isrc",         L"TSRC",         L"ISRC",        L"----:ISRC",      L"WM/ISRC",             L"ISRC",         nullptr},
    {L"upc",          L"TXXX:BARCODE", L"BARCODE",     L"----:BARCODE",   L"WM/Barcode",          L"Barcode",      nullptr},
    {L"mood",         L"TMOO",         L"MOOD",        L"----:MOOD",      L"WM/Mood",             L"Mood",         nullptr},
    {L"style",        L"TXXX:STYLE",   L"STYLE",       L"----:STYLE",     L"STYLE",               L"Style",        nullptr},
    {L"copyright",    L"TCOP",         L"COPYRIGHT",   L"cprt",           L"Copyright",           L"Copyright",    L"ICOP"},
    {L"tempo",        L"TBPM",         L"BPM",         L"tmpo",           L"WM/BeatsPerMinute",   L"BPM",          nullptr},
    {L"rating",       L"POPM",         L"RATING",      L"rate",           L"WM/SharedUserRating", L"RATING",       L"IRTD"},
    {L"encoder",      L"TSSE",         L"ENCODER",     L"\251too",        L"WM/EncodingSettings", L"Encoder",      L"ISFT"},
};
// clang-format on
} // namespace

std::span<const clMappingRow> MappingRows() {
    return Rows;
}

const clMappingRow* FindMappingRow(const NString& element) {
    for (const clMappingRow& row : Rows) {
        if (element.Compare(row.Element, 0, true) == 0)
            return &row;
    }
    return nullptr;
}

} // namespace tagmap
