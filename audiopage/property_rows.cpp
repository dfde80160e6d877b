#include "audiopage/property_rows.h"

#include "audiopage/cover_panel.h"
#include "audiopage/display_units.h"
#include "audiopage/merged_facts.h"
#include "audiopage/merged_tags.h"
#include "audiopage/row_texts.h"
#include "codec/codec_handler.h"
#include "codec/decoder.h"
#include "foundation/module_instance.h"
#include "foundation/npath.h"
#include "foundation/unique_handle.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nthread.h"

namespace {
// What the files of one run said, as far as the rows show it.
struct FileFacts {
    MergedTags tags;
    clTagRecord tech; // of one path alone
    MergedFacts merged;
};

// All that a value may come from.
struct RowSources {
    FileFacts& facts;
    const NStringList& files;
    uint32_t fileSizeUnit;

    // The count of paths handed in, never that of the files that could be
    // read, decides which form the rows take.
    bool OnePath() const { return files.Count == 1; }
};

class FileReader {
public:
    FileReader(FileFacts& facts, bool onePath, NKeyedList<NCanvas>* artTarget)
        : facts_(facts), onePath_(onePath), artTarget_(artTarget) {}

    void Read(const NString& path, bool isFirstPath);

private:
    bool OpenFile(const NString& path, clAudioInfo& info);
    void KeepLibrary();
    void TakeTags(const clAudioInfo& info, bool isFirstPath);

    FileFacts& facts_;
    bool onePath_;
    NKeyedList<NCanvas>* artTarget_;
    UniqueModule library_;
    cltNDecoder decoder_;
    cltNCodecHandler handler_;
};

void FileReader::Read(const NString& path, bool isFirstPath) {
    // 2. and 3.
    clAudioInfo info = {};
    if (!OpenFile(path, info))
        return;
    // 4. and 8.
    facts_.merged.Add(info);
    // 5.
    if (onePath_)
        TakeDecoderRecord(info.TechInfo, info.TechInfoSize, facts_.tech);
    // 6. and 7.
    TakeTags(info, isFirstPath);
}

// The file isn't closed: the decoder's instance goes with the next search for
// a decoder, and what it handed out is read before that.
bool FileReader::OpenFile(const NString& path, clAudioInfo& info) {
    NLogContext nothingLogged = {};
    if (!handler_.FindDecoder(path, decoder_, &nothingLogged, NModuleInstance()))
        return false;
    KeepLibrary();
    info.Path = path.Text;
    info.Request = AudioInfoRequest;
    return decoder_.Open(&info) != 0;
}

// Where the extension changes from file to file, the decoder frees its library
// and loads it again each time. With this hold on it, it isn't mapped anew.
void FileReader::KeepLibrary() {
    if (decoder_.Module && decoder_.Module != library_.Get())
        library_.Reset(LoadLibraryW(decoder_.Path.Text));
}

void FileReader::TakeTags(const clAudioInfo& info, bool isFirstPath) {
    clTagRecord fileTags;
    if (info.Tags && info.TagsSize != 0) {
        TakeDecoderRecord(info.Tags, info.TagsSize, fileTags);
        if (onePath_) {
            facts_.tags.TakeWhole(fileTags);
            if (artTarget_)
                BuildAlbumArt(*artTarget_, fileTags);
        } else {
            facts_.tags.Merge(fileTags, isFirstPath);
        }
    }
    facts_.tags.MarkWhatIsMissing(fileTags);
}

// False if `stop` was set.
bool ReadFiles(const NStringList& files, NEvent* stop, FileFacts& facts,
               NKeyedList<NCanvas>* artTarget) {
    FileReader reader(facts, files.Count == 1, artTarget);
    for (int index = 0; index < files.Count; ++index) {
        if (stop && stop->IsSet())
            return false;
        reader.Read(*files[index], index == 0);
    }
    return true;
}

constexpr int32_t RightEdge = 227;
constexpr int32_t BesideCover = 108; // x of the values beside the cover
constexpr int32_t BelowCover = 74;   // and of those below it
constexpr int32_t TrackWidth = 100;
constexpr int32_t DiscX = 183;

// One row of the page. Its value is the element of the files' tag or of the
// decoder's facts, or what the function makes.
struct RowForm {
    const wchar_t* label;
    const wchar_t* labelOfMany; // null where the page of several has no such row
    int32_t labelX;
    int32_t y;
    int32_t valueX;
    int32_t valueWidth;
    const wchar_t* tagElement;
    const wchar_t* techElement;
    NString (*text)(const RowSources& sources);
};

constexpr RowForm BesideCoverRow(const wchar_t* label, int32_t y, const wchar_t* element) {
    return {label, label, -103, y, BesideCover, RightEdge - BesideCover, element, nullptr, nullptr};
}

constexpr RowForm TagRow(const wchar_t* label, int32_t y, const wchar_t* element) {
    return {label, label, 7, y, BelowCover, RightEdge - BelowCover, element, nullptr, nullptr};
}

constexpr RowForm TextRow(const wchar_t* label, const wchar_t* labelOfMany, int32_t y,
                          NString (*text)(const RowSources& sources)) {
    return {label, labelOfMany, 7, y, BelowCover, RightEdge - BelowCover, nullptr, nullptr, text};
}

constexpr RowForm TechRow(const wchar_t* label, int32_t y, const wchar_t* element) {
    return {label, nullptr, 7, y, BelowCover, RightEdge - BelowCover, nullptr, element, nullptr};
}

constexpr RowForm RowForms[] = {
    BesideCoverRow(L"Artist", 7, L"artist"),
    BesideCoverRow(L"Title", 17, L"title"),
    BesideCoverRow(L"Album", 27, L"album"),
    {L"Track", L"Track", -103, 37, BesideCover, TrackWidth, L"track", nullptr, nullptr},
    {L"Disc", L"Disc", -178, 37, DiscX, RightEdge - DiscX, L"disc", nullptr, nullptr},
    BesideCoverRow(L"Genre", 47, L"genre"),
    BesideCoverRow(L"Year", 57, L"year"),
    TagRow(L"Rating", 68, L"rating"),
    TagRow(L"Composer", 78, L"composer"),
    TextRow(L"Size", L"Combined Size", 93,
            [](const RowSources& from) { return SizeText(from.facts.merged, from.fileSizeUnit); }),
    TextRow(L"Original Size", L"Original Size", 103,
            [](const RowSources& from) {
                return OriginalSizeText(from.facts.merged, from.fileSizeUnit);
            }),
    TextRow(L"Length", L"Combined Length", 113,
            [](const RowSources& from) { return LengthText(from.facts.merged); }),
    TextRow(L"Channels", L"Channels", 123,
            [](const RowSources& from) { return ChannelsText(from.facts.merged); }),
    TextRow(L"Sample Rate", L"Sample Rate", 133,
            [](const RowSources& from) { return SampleRateText(from.facts.merged); }),
    TextRow(L"Sample Size", L"Sample Size", 143,
            [](const RowSources& from) { return SampleSizeText(from.facts.merged); }),
    TextRow(L"Bit Rate", L"Average Bit Rate", 153,
            [](const RowSources& from) { return BitRateText(from.facts.merged, from.OnePath()); }),
    TechRow(L"Encoder", 168, L"encoder"),
    TechRow(L"Encoder Settings", 178, L"encoder settings"),
    TechRow(L"Audio Quality", 188, L"audio quality"),
    TechRow(L"Contains", 198, L"contains"),
    TechRow(L"Channel Mapping", 208, L"channel mapping"),
    TextRow(L"File", nullptr, 218,
            [](const RowSources& from) { return NGetBaseName(*from.files[0]); }),
    TextRow(L"Type", nullptr, 228, [](const RowSources& from) { return TypeText(*from.files[0]); }),
};

NString RowValue(const RowForm& form, const RowSources& sources) {
    if (form.tagElement)
        return sources.facts.tags.Value(form.tagElement);
    if (form.techElement)
        return TagValue(sources.facts.tech, form.techElement);
    return form.text(sources);
}

void AddRow(NKeyedList<clPropRow>& rows, const RowForm& form, const RowSources& sources) {
    const wchar_t* label = sources.OnePath() ? form.label : form.labelOfMany;
    if (!label)
        return;
    clPropRow& row = *rows.Add();
    row.LabelX = form.labelX;
    row.Y = form.y;
    row.ValueX = form.valueX;
    row.ValueWidth = form.valueWidth;
    row.Label = label;
    row.Value = RowValue(form, sources);
}
} // namespace

void BuildPropRows(const NStringList& files, NEvent* stop, NKeyedList<clPropRow>& rows,
                   NKeyedList<NCanvas>* artTarget) {
    // 1.
    uint32_t fileSizeUnit = UnitsSettings::FileSize();
    rows.Clear();
    if (artTarget)
        artTarget->Clear();
    FileFacts facts;
    // 2.
    if (!ReadFiles(files, stop, facts, artTarget))
        return;
    // 3. and 4.
    RowSources sources{facts, files, fileSizeUnit};
    for (const RowForm& form : RowForms)
        AddRow(rows, form, sources);
}
