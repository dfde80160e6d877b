#include "codec/codec_handler.h"
#include "tests/codec/decoder_search.h"
#include "tests/support/page_end.h"

#include <cstring>

// Plug-ins that don't keep to the contract: a search goes on behind them, and
// the process lives.
namespace {
class LyingPlugin : public DecoderSearch {
protected:
    LyingPlugin() { folder_.Add(L"a.dll"); }

    // Finds nothing with the plug-in that answers so; the number of its answers.
    int AnswersUntilGivenUp(std::function<int32_t(clDecodesInfo&)> get) {
        int answers = 0;
        script_.get = [&](clDecodesInfo& info) {
            ++answers;
            return get(info);
        };
        EXPECT_FALSE(Find(L"file.x"));
        return answers;
    }
    const wchar_t* TextAtPageEnd(const wchar_t* units, size_t bytes) {
        return static_cast<const wchar_t*>(pages_.Put(units, bytes));
    }

    PageEnd pages_;
};
} // namespace

TEST_F(LyingPlugin, SaysThatItSucceededAndNamesNoExtension) {
    EXPECT_EQ(AnswersUntilGivenUp([](clDecodesInfo&) { return 1; }), 1);
}

TEST_F(LyingPlugin, FailsAndNamesTheExtensionAllTheSame) {
    EXPECT_EQ(AnswersUntilGivenUp([](clDecodesInfo& info) {
                  info.Extension = L".x";
                  return 0;
              }),
              1);
}

TEST_F(LyingPlugin, SucceedsWithANegativeNumber) {
    script_.get = [](clDecodesInfo& info) {
        info.Extension = L".x";
        return -1;
    };
    EXPECT_TRUE(Find(L"file.x"));
}

TEST_F(LyingPlugin, NeverStopsClaiming) {
    EXPECT_EQ(AnswersUntilGivenUp([](clDecodesInfo& info) {
                  info.Extension = L".other";
                  return 1;
              }),
              65536);
}

TEST_F(LyingPlugin, ClaimsTheExtensionAtTheLastPlaceThatIsAsked) {
    uint32_t answers = 0;
    script_.get = [&](clDecodesInfo& info) {
        info.Extension = ++answers == 65536 ? L".x" : L".other";
        return 1;
    };
    EXPECT_TRUE(Find(L"file.x"));
}

TEST_F(LyingPlugin, NamesAnExtensionWhereNothingIs) {
    uintptr_t behindPages = reinterpret_cast<uintptr_t>(pages_.LastBytes(0));
    for (uintptr_t address : {uintptr_t{1}, behindPages, UINTPTR_MAX}) {
        SCOPED_TRACE(address);
        decoder_.Unload();
        EXPECT_EQ(AnswersUntilGivenUp([=](clDecodesInfo& info) {
                      info.Extension = reinterpret_cast<const wchar_t*>(address);
                      return 1;
                  }),
                  1);
    }
}

TEST_F(LyingPlugin, NamesTheExtensionWithoutAnEnd) {
    const wchar_t* text = TextAtPageEnd(L".x", 2 * sizeof(wchar_t));
    EXPECT_EQ(AnswersUntilGivenUp([=](clDecodesInfo& info) {
                  info.Extension = text;
                  return 1;
              }),
              1);
}

TEST_F(LyingPlugin, NamesHalfAUnitLessThanTheExtension) {
    const wchar_t* text = TextAtPageEnd(L".x", 3 * sizeof(wchar_t) - 1);
    EXPECT_EQ(AnswersUntilGivenUp([=](clDecodesInfo& info) {
                  info.Extension = text;
                  return 1;
              }),
              1);
}

TEST_F(LyingPlugin, NamesAnotherExtensionWithoutAnEndAndThenTheRightOne) {
    const wchar_t* text = TextAtPageEnd(L".yyyy", 5 * sizeof(wchar_t));
    int answers = 0;
    script_.get = [&](clDecodesInfo& info) {
        info.Extension = ++answers == 1 ? text : L".x";
        return 1;
    };
    EXPECT_TRUE(Find(L"file.x"));
    EXPECT_EQ(answers, 2);
}

TEST_F(LyingPlugin, NamesTheExtensionAtTheEndOfItsMemory) {
    const wchar_t* text = TextAtPageEnd(L".x", 3 * sizeof(wchar_t));
    script_.get = [&](clDecodesInfo& info) {
        info.Extension = text;
        return 1;
    };
    EXPECT_TRUE(Find(L"file.x"));
}

TEST_F(LyingPlugin, NamesTheExtensionAtAnOddAddress) {
    char bytes[1 + 3 * sizeof(wchar_t)];
    memcpy(bytes + 1, L".x", 3 * sizeof(wchar_t));
    script_.get = [&](clDecodesInfo& info) {
        const void* text = bytes + 1;
        memcpy(&info.Extension, &text, sizeof(text));
        return 1;
    };
    EXPECT_TRUE(Find(L"file.x"));
}

TEST_F(LyingPlugin, MakesNoInstanceAndTheNextOneIsTaken) {
    folder_.Add(L"b.dll");
    script_.claims[L"a.dll"] = {L".x"};
    script_.claims[L"b.dll"] = {L".x"};
    int made = 0;
    script_.create = [&]() -> void* { return ++made == 1 ? nullptr : &made; };
    EXPECT_TRUE(Find(L"file.x"));
    EXPECT_EQ(made, 2);
}

TEST_F(LyingPlugin, Throws) {
    script_.throws = true;
    EXPECT_FALSE(Find(L"file.x"));
    EXPECT_EQ(decoder_.Handle, nullptr);
}
