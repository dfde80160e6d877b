#include "tests/codec/decoder_search.h"
#include "tests/codec/trace_file.h"

// The exact text of a whole search, for each way through it.
namespace {
class SearchTrace : public DecoderSearch {
protected:
    // What the search for the file adds to the output. A line behind it shows
    // at which indent it leaves.
    std::wstring TraceOf(const wchar_t* path) {
        size_t before = file_.Text().size();
        handler_.FindDecoder(path, decoder_, file_.Context(), folder_.Module());
        NTraceWrite(L"end", file_.Context(), nullptr, true);
        return file_.Text().substr(before);
    }
    static std::wstring Checking(const NString& library, const wchar_t* extension) {
        return std::wstring(L"    Checking Decoder '") + library.Text + L"' for extension '" +
               extension + L"'\r\n";
    }

    TraceFile file_;
};

const std::wstring Enter = L"->->  [cltNCodecHandler::FindDecoder]\r\n";
const std::wstring Leave = L"<-<-  [cltNCodecHandler::FindDecoder]\r\nend\r\n";
const std::wstring Match = L"  <<< Match, using decoder\r\n";
} // namespace

TEST_F(SearchTrace, OfAScanThatFinds) {
    NString a = AddPlugin(L"a.dll", {L".y"});
    NString b = AddPlugin(L"b.dll", {L".x"});
    std::wstring text = TraceOf(L"file.x");
    EXPECT_EQ(text, Enter + Checking(a, L".x") + Checking(b, L".x") + Match + Leave);
}

TEST_F(SearchTrace, OfAScanThatFindsNothing) {
    NString a = AddPlugin(L"a.dll", {L".y"});
    EXPECT_EQ(TraceOf(L"file.X"), Enter + Checking(a, L".X") + Leave);
}

TEST_F(SearchTrace, OfAFolderWithoutLibraries) {
    folder_.AddFolder(L"x.dll");
    folder_.AddPlainFile(L"x.txt");
    EXPECT_EQ(TraceOf(L"file.x"), Enter + Leave);
}

// Wanted: the text about the library doesn't end its line.
TEST_F(SearchTrace, OfALibraryThatIsLoaded) {
    AddPlugin(L"a.dll", {L".x"});
    TraceOf(L"first.x");
    EXPECT_EQ(TraceOf(L"second.x"), Enter + L"  Using Existing Decoder" + Leave);
}

TEST_F(SearchTrace, OfALibraryThatTheHandlerRemembers) {
    NString a = AddPlugin(L"a.dll", {L".x"});
    TraceOf(L"first.x");
    decoder_.Unload();
    EXPECT_EQ(TraceOf(L"second.x"), Enter + L"  Using Cached Decoder: " + a.Text + L"\r\n" + Leave);
}

TEST_F(SearchTrace, OfALibraryOutOfTheRegistry) {
    NString a = AddPlugin(L"a.dll", {L".x"});
    SetCached(L".x", a);
    EXPECT_EQ(TraceOf(L"file.x"), Enter + Checking(a, L".x") + Match +
                                      L"  Using Registry Cached Decoder: " + a.Text + L"\r\n" +
                                      Leave);
}

TEST_F(SearchTrace, OfAStaleValueOfTheRegistry) {
    NString gone = folder_.PathOf(L"gone.dll");
    NString a = AddPlugin(L"a.dll", {L".y"});
    SetCached(L".x", gone);
    EXPECT_EQ(TraceOf(L"file.x"), Enter + Checking(gone, L".x") + Checking(a, L".x") + Leave);
}

TEST_F(SearchTrace, ReachesThePluginOnEachWay) {
    NString a = AddPlugin(L"a.dll", {L".x", L".y"});
    SetCached(L".y", a);
    auto reaches = [this](const wchar_t* path) {
        script_.logContext = nullptr;
        TraceOf(path);
        return script_.logContext == file_.Context();
    };
    EXPECT_TRUE(reaches(L"scanned.x"));
    EXPECT_TRUE(reaches(L"loaded.x"));
    decoder_.Unload();
    EXPECT_TRUE(reaches(L"remembered.x"));
    EXPECT_TRUE(reaches(L"registered.y"));
}
