#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "benchmarks/music_folder.h"
#include "codec/tag_exchange.h"
#include "foundation/module_instance.h"
#include "foundation/nprocess.h"
#include "resources/resource_ids.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/page_procedures.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {
constexpr int Files = 200;
constexpr int Rounds = 3;           // each of some seconds
constexpr DWORD LongestRun = 10000; // milliseconds

// The page in a window of its own on the screen, as a sheet would have it.
class ShownTagPage {
public:
    explicit ShownTagPage(const NStringList& files) : page_(new clIDTagPage) {
        page_->Files.CopyFrom(files);
        page_->Files.SortByText(true);
        constexpr int width = 420;
        constexpr int height = 480;
        frame_ = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, width,
                                 height, nullptr, nullptr, nullptr, nullptr);
        sheetPage_.pszTitle = L"ID-Tag";
        sheetPage_.lParam = reinterpret_cast<LPARAM>(page_);
        const HWND window =
            CreateDialogParamW(NModuleInstance(), MAKEINTRESOURCEW(IDD_TAG_PAGE), frame_,
                               PageDlgProc, reinterpret_cast<LPARAM>(&sheetPage_));
        ShowWindow(window, SW_SHOWNA);
    }
    ~ShownTagPage() {
        DestroyWindow(frame_);
        PageRelease(nullptr, PSPCB_RELEASE, &sheetPage_);
    }
    ShownTagPage(const ShownTagPage&) = delete;
    ShownTagPage& operator=(const ShownTagPage&) = delete;

    clIDTagPage& Page() { return *page_; }
    // The window's messages, until the rows are there.
    void WaitForRows() {
        MSG message;
        while (!page_->ControlsReady && GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
        if (page_->ValueList.rows.Count() == 0)
            throw std::runtime_error("the page ID-Tag has no rows");
    }

private:
    clIDTagPage* page_; // until PageRelease
    PROPSHEETPAGEW sheetPage_ = {};
    HWND frame_;
};

void BenchOpening(const BenchPlaces& places, const NStringList& files) {
    const NString emptyProgram = BenchPlaces::InFolder(places.bench, L"empty_program.exe");
    const MedianPair time = MeasurePair(
        Rounds,
        [&] {
            ShownTagPage shown(files);
            shown.WaitForRows();
        },
        [&] {
            for (int count = 0; count < Files; ++count)
                NRunProgram(emptyProgram.Text, L"", true, LongestRun, false,
                            CREATE_NO_WINDOW | NORMAL_PRIORITY_CLASS);
        });
    printf("the page ID-Tag of %d files\n", Files);
    PrintTime("from its opening to its rows", time.subject);
    PrintTime("as many runs of an empty program", time.yardstick);
    PrintRatio(time.Ratio(), "at most 1.6");
}

constexpr wchar_t Changed[] = L"title";

NValueRow& RowNamed(clIDTagPage& page, const wchar_t* name) {
    for (int index = 0; index < page.ValueList.rows.Count(); ++index) {
        NValueRow& row = *page.ValueList.rows[index];
        if (row.name.Compare(name, 0, true) == 0)
            return row;
    }
    throw std::runtime_error("the page ID-Tag lacks a row");
}

std::wstring ValueIn(const NString& path) {
    NBuffer reply;
    RunGetAudioInf(path.Text, reply);
    clTagRecord tag;
    tag.Deserialise(reply.Data, static_cast<int>(reply.Size));
    const clTagElement* element = tag.Find(Changed);
    return element ? element->Value.c_str() : L"";
}

// `other` is a file that isn't on the page.
void BenchCommit(const NStringList& files, const NString& other) {
    ShownTagPage shown(files);
    shown.WaitForRows();
    clIDTagPage& page = shown.Page();
    page.ToggleView();
    int round = 0;
    const auto newText = [&round] { return L"Round " + std::to_wstring(++round); };
    const MedianPair time = MeasurePair(
        Rounds,
        [&] {
            const std::wstring text = newText();
            RowNamed(page, Changed).value = text.c_str();
            page.Commit();
        },
        [&] {
            NBuffer reply;
            for (int index = 0; index < Files; ++index)
                RunGetAudioInf(files[index]->Text, reply);
            clTagRecord change;
            change.Add(Changed, newText().c_str());
            RunSetTags(other.Text, change);
        });
    // The page's last change, which was made before the yardstick's last one.
    if (ValueIn(*page.Files[0]) != L"Round " + std::to_wstring(round - 1))
        throw std::runtime_error("the commit has changed nothing");
    printf("a commit that changes one of %d files\n", Files);
    PrintTime("Commit", time.subject);
    PrintTime("a read of each, and a write of one", time.yardstick);
    PrintRatio(time.Ratio(), "at most 1.2");
}

// A list box of the page's kind, whose rows nobody draws.
class BareList {
public:
    BareList()
        : frame_(CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 400,
                                 400, nullptr, nullptr, nullptr, nullptr)),
          list_(CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"",
                                WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY |
                                    LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT,
                                0, 0, 400, 400, frame_, nullptr, nullptr, nullptr)) {}
    ~BareList() { DestroyWindow(frame_); }
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;

    void Fill(int rows) {
        SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
        SendMessageW(list_, LB_RESETCONTENT, 0, 0);
        for (int row = 0; row < rows; ++row)
            SendMessageW(list_, LB_INSERTSTRING, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(L"element: Some text of a usual length"));
        SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
    }

private:
    HWND frame_;
    HWND list_;
};

void BenchBuildRows(const NString& file) {
    constexpr int elements = 40;
    constexpr int rounds = 51;
    NStringList files;
    files.Add(file);
    ShownTagPage shown(files);
    shown.WaitForRows();
    clIDTagPage& page = shown.Page();
    page.CurrentTags().Clear();
    for (int number = 1; number <= elements; ++number)
        page.CurrentTags().Add((L"element " + std::to_wstring(number)).c_str(),
                               L"Some text of a usual length; and another one");
    page.BuildRows();
    BareList bare;
    const MedianPair time = MeasurePair(
        rounds, [&] { page.BuildRows(); }, [&] { bare.Fill(page.ValueList.rows.Count()); });
    printf("the rows of a tag of %d elements\n", elements);
    PrintTime("BuildRows (goal: under 30 ms)", time.subject);
    PrintTime("of which the list box itself", time.yardstick);
    printf("\n");
    fflush(stdout);
}
} // namespace

bool BenchTagPage(const BenchPlaces& places) {
    const MusicFolder folder;
    const NString sample = BenchPlaces::InFolder(places.samples, L"sample.mp3");
    NStringList files;
    for (int number = 0; number < Files; ++number)
        files.Add(folder.Copy(sample, number));
    BenchOpening(places, files);
    BenchCommit(files, folder.Copy(sample, Files));
    BenchBuildRows(*files[0]);
    return true;
}
