#include "foundation/nlists.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>

namespace {
void* Item(intptr_t number) {
    return reinterpret_cast<void*>(number);
}

intptr_t NumberAt(const NPtrList& list, int index) {
    return reinterpret_cast<intptr_t>(list.At(index));
}

void AddNumbers(NPtrList& list, int count) {
    for (int number = 1; number <= count; ++number)
        list.Add(Item(number));
}

int Smaller(void* first, void* second, intptr_t) {
    return first < second;
}

int Larger(void* first, void* second, intptr_t context) {
    return first > second && context == 42;
}

int AlwaysBefore(void*, void*, intptr_t) {
    return 1;
}

void Fill(NStringList& list, std::initializer_list<const wchar_t*> texts) {
    for (const wchar_t* text : texts)
        list.Add(text);
}

NString Joined(const NStringList& list) {
    return list.Join(L"|");
}

struct Counted {
    static int alive;
    int number = 7;
    Counted() { ++alive; }
    ~Counted() { --alive; }
};
int Counted::alive = 0;

struct Plain {
    int number;
};

// Notes its name as it goes.
struct Noting {
    static NString* gone;
    wchar_t name = 0;
    ~Noting() { gone->InsertChar(name); }
};
NString* Noting::gone = nullptr;
} // namespace

TEST(NPtrList, LiesInMemoryInItsOrderOfFields) {
    EXPECT_LT(offsetof(NPtrList, Count), offsetof(NPtrList, Items));
    EXPECT_LT(offsetof(NPtrList, Items), offsetof(NPtrList, Capacity));
    EXPECT_LT(offsetof(NPtrList, Capacity), offsetof(NPtrList, Grow));
    EXPECT_LT(offsetof(NPtrList, Grow), offsetof(NPtrList, Inline));
}

TEST(NPtrList, StartsWithRoomFor16) {
    NPtrList list;
    EXPECT_EQ(list.Count, 0);
    EXPECT_EQ(list.Items, list.Inline);
    EXPECT_EQ(list.Capacity, 16);
    EXPECT_EQ(list.Grow, 32);
    AddNumbers(list, 16);
    EXPECT_EQ(list.Items, list.Inline);
}

TEST(NPtrList, GrowsTo16And48And112And240) {
    NPtrList list;
    AddNumbers(list, 17);
    EXPECT_EQ(list.Capacity, 48);
    AddNumbers(list, 32);
    EXPECT_EQ(list.Capacity, 112);
    AddNumbers(list, 64);
    EXPECT_EQ(list.Capacity, 240);
    EXPECT_EQ(NumberAt(list, 0), 1);
    EXPECT_EQ(NumberAt(list, 16), 17);
}

TEST(NPtrList, GrowthStepsEndAt500000) {
    NPtrList list;
    list.Grow = 400000;
    AddNumbers(list, 17);
    EXPECT_EQ(list.Capacity, 400016);
    EXPECT_EQ(list.Grow, 500000);
}

TEST(NPtrList, AfterClearTheFirstAddTakesTheGrowthStep) {
    NPtrList list;
    AddNumbers(list, 3);
    list.Clear();
    EXPECT_EQ(list.Items, nullptr);
    EXPECT_EQ(list.Count, 0);
    EXPECT_EQ(list.Capacity, 0);
    EXPECT_EQ(list.Grow, 32);
    list.Add(Item(5));
    EXPECT_EQ(list.Capacity, 32);
    EXPECT_EQ(NumberAt(list, 0), 5);
}

TEST(NPtrList, InsertAtMovesTheItemsBehind) {
    NPtrList list;
    AddNumbers(list, 3);
    list.InsertAt(1, Item(9));
    EXPECT_EQ(NumberAt(list, 1), 9);
    EXPECT_EQ(NumberAt(list, 3), 3);
    list.InsertAt(-1, Item(10));
    EXPECT_EQ(NumberAt(list, 4), 10);
    list.InsertAt(99, Item(11));
    EXPECT_EQ(NumberAt(list, 5), 11);
    list.InsertAt(-2, Item(12));
    EXPECT_EQ(list.Count, 6);
}

TEST(NPtrList, RemoveAtClosesTheGap) {
    NPtrList list;
    AddNumbers(list, 3);
    list.RemoveAt(0);
    EXPECT_EQ(list.Count, 2);
    EXPECT_EQ(NumberAt(list, 0), 2);
    list.RemoveAt(2);
    list.RemoveAt(-1);
    EXPECT_EQ(list.Count, 2);
    EXPECT_EQ(list.At(2), nullptr);
    EXPECT_EQ(list.At(-1), nullptr);
}

TEST(NPtrList, SortsTheWholeOrARange) {
    NPtrList list;
    for (int number : {5, 3, 9, 1, 7, 3, 8})
        list.Add(Item(number));
    list.Sort(Smaller, 0, 1, 3);
    EXPECT_EQ(NumberAt(list, 0), 5);
    EXPECT_EQ(NumberAt(list, 1), 1);
    EXPECT_EQ(NumberAt(list, 3), 9);
    EXPECT_EQ(NumberAt(list, 4), 7);
    list.Sort(Larger, 42, -1, -1);
    for (int index = 1; index < list.Count; ++index)
        EXPECT_GE(NumberAt(list, index - 1), NumberAt(list, index));
}

TEST(NPtrList, SortsManyItemsInEveryStartingOrder) {
    for (int step : {1, 7, 4999}) {
        NPtrList list;
        for (int index = 0; index < 5000; ++index)
            list.Add(Item(index * step % 5000));
        list.Sort(Smaller, 0);
        for (int index = 1; index < list.Count; ++index)
            ASSERT_LE(NumberAt(list, index - 1), NumberAt(list, index));
    }
}

TEST(NPtrList, SortWithARangeOutsideTheListDoesNothing) {
    NPtrList list;
    list.Add(Item(2));
    list.Add(Item(1));
    list.Sort(Smaller, 0, 0, 5);
    list.Sort(Smaller, 0, -7, 1);
    EXPECT_EQ(NumberAt(list, 0), 2);
    NPtrList empty;
    empty.Sort(Smaller, 0);
    EXPECT_EQ(empty.Count, 0);
}

TEST(NPtrList, AComparisonThatContradictsItselfLosesNoItem) {
    NPtrList list;
    AddNumbers(list, 100);
    list.Sort(AlwaysBefore, 0);
    list.Sort(Smaller, 0);
    for (int index = 0; index < 100; ++index)
        EXPECT_EQ(NumberAt(list, index), index + 1);
}

TEST(NStringList, KeepsTextsWithTheirValues) {
    NStringList list;
    list.Add(L"wide", 1);
    list.Add(NString(L"string", 99), 2);
    list.Add("narrow", 3);
    EXPECT_EQ(*list[0], L"wide");
    EXPECT_EQ(list[0]->Value, 1);
    EXPECT_EQ(*list[1], L"string");
    EXPECT_EQ(list[1]->Value, 2);
    EXPECT_EQ(*list[2], L"narrow");
    EXPECT_EQ(list[2]->Value, 3);
    EXPECT_EQ(list[3], nullptr);
}

TEST(NStringList, RemovesByIndexAndIgnoresBadOnes) {
    NStringList list;
    Fill(list, {L"a", L"b", L"c"});
    list.RemoveAt(1);
    list.RemoveAt(5);
    list.RemoveAt(-1);
    EXPECT_EQ(Joined(list), L"a|c");
    list.Clear();
    EXPECT_EQ(list.Count, 0);
    list.Add(L"again");
    EXPECT_EQ(Joined(list), L"again");
}

TEST(NStringList, ContainsMayIgnoreCase) {
    NStringList list;
    Fill(list, {L"Rock", L"Pop"});
    EXPECT_TRUE(list.Contains(L"Pop"));
    EXPECT_FALSE(list.Contains(L"pop"));
    EXPECT_TRUE(list.Contains(L"pop", true));
    EXPECT_FALSE(list.Contains(L"Po", true));
}

TEST(NStringList, JoinPutsTheSeparatorBetween) {
    NStringList list;
    EXPECT_EQ(list.Join(L", "), L"");
    Fill(list, {L"a"});
    EXPECT_EQ(list.Join(L", "), L"a");
    Fill(list, {L"", L"c"});
    EXPECT_EQ(list.Join(L", "), L"a, , c");
    EXPECT_EQ(list.Join(L""), L"ac");
    EXPECT_EQ(list.Join(nullptr), L"");
}

TEST(NStringList, CopyFromAppendsWithValues) {
    NStringList source;
    source.Add(L"x", 7);
    NStringList list;
    list.Add(L"first");
    list.CopyFrom(source, true, false);
    EXPECT_EQ(Joined(list), L"first|x");
    EXPECT_EQ(list[1]->Value, 7);
    list.CopyFrom(list, true, false);
    EXPECT_EQ(Joined(list), L"first|x|first|x");
}

TEST(NStringList, CopyFromWithoutDuplicatesKeepsTheFirstOfTwoThatDifferInCase) {
    NStringList source;
    Fill(source, {L"Rock", L"ROCK", L"Pop"});
    NStringList list;
    list.CopyFrom(source, false, true);
    EXPECT_EQ(Joined(list), L"Rock|Pop");
    NStringList withCase;
    withCase.CopyFrom(source, false, false);
    EXPECT_EQ(Joined(withCase), L"Rock|ROCK|Pop");
}

TEST(NStringList, SortsByText) {
    NStringList list;
    Fill(list, {L"b", L"A", L"c", L"B", L"a"});
    list.SortByText(false);
    EXPECT_EQ(Joined(list), L"A|B|a|b|c");
    NStringList folded;
    Fill(folded, {L"b", L"C", L"A"});
    folded.SortByText(true);
    EXPECT_EQ(Joined(folded), L"A|b|C");
}

TEST(NStringList, SplitLinesSplitsAtCarriageReturns) {
    NStringList list;
    list.SplitLines(L"a\r\nb\rc\r\n\n\nd");
    EXPECT_EQ(Joined(list), L"a|b|c|d");
    list.SplitLines(L"e");
    EXPECT_EQ(Joined(list), L"a|b|c|d|e");
}

TEST(NStringList, SplitLinesKeepsEmptyPiecesBetweenAndNoneBehindTheLast) {
    NStringList list;
    list.SplitLines(L"\ra\r\rb\r");
    EXPECT_EQ(Joined(list), L"|a||b");
    NStringList none;
    none.SplitLines(L"");
    none.SplitLines(nullptr);
    EXPECT_EQ(none.Count, 0);
    // A line feed without a carriage return is part of the text.
    none.SplitLines(L"a\nb");
    EXPECT_EQ(Joined(none), L"a\nb");
}

TEST(NStringList, WritesAWideBlockWithOneFurtherZero) {
    NStringList list;
    Fill(list, {L"ab", L"", L"c"});
    NBuffer block;
    list.ToMultiString(block, true);
    const wchar_t expected[] = L"ab\0[Empty]\0c\0";
    ASSERT_EQ(block.Size, sizeof(expected));
    EXPECT_EQ(memcmp(block.Data, expected, sizeof(expected)), 0);
}

TEST(NStringList, WritesANarrowBlockWithOneFurtherZero) {
    NStringList list;
    Fill(list, {L"ab", L"", L"c"});
    NBuffer block;
    list.ToMultiString(block, false);
    const char expected[] = "ab\0[Empty]\0c\0";
    ASSERT_EQ(block.Size, sizeof(expected));
    EXPECT_EQ(memcmp(block.Data, expected, sizeof(expected)), 0);
}

TEST(NStringList, AnEmptyListMakesABlockOfTwoZeroUnits) {
    NStringList list;
    NBuffer block;
    list.ToMultiString(block, true);
    EXPECT_EQ(block.Size, 4u);
    EXPECT_EQ(memcmp(block.Data, "\0\0\0\0", 4), 0);
    list.ToMultiString(block, false);
    EXPECT_EQ(block.Size, 2u);
    EXPECT_EQ(memcmp(block.Data, "\0\0", 2), 0);
}

TEST(NStringList, AnEmptyItemSurvivesABlock) {
    NStringList list;
    Fill(list, {L"a", L"", L"b"});
    for (bool wide : {true, false}) {
        NBuffer block;
        list.ToMultiString(block, wide);
        NStringList back;
        back.Add(L"gone");
        back.FromMultiString(block.Data, block.Size, wide);
        EXPECT_EQ(Joined(back), L"a||b");
    }
}

TEST(NStringList, ReadsABlockUpToTheFirstEmptyPieceOrItsSize) {
    NStringList list;
    const wchar_t block[] = L"a\0b\0\0c";
    list.FromMultiString(block, sizeof(block), true);
    EXPECT_EQ(Joined(list), L"a|b");
    list.FromMultiString("ab\0cdef", 5, false);
    EXPECT_EQ(Joined(list), L"ab|cd");
    list.FromMultiString(L"abc", 5, true); // two units and half of one
    EXPECT_EQ(Joined(list), L"ab");
    list.FromMultiString(nullptr, 5, true);
    EXPECT_EQ(list.Count, 0);
}

TEST(NStringList, ASizeAtTheEndOfItsRangeYieldsNoItems) {
    NStringList list;
    list.Add(L"gone");
    list.FromMultiString("a", UINT32_MAX, false);
    EXPECT_EQ(list.Count, 0);
    list.FromMultiString(L"a", UINT32_MAX, true);
    EXPECT_EQ(list.Count, 0);
}

TEST(NStringList, TakesASeparatorForAZero) {
    NStringList list;
    list.FromMultiString(L"a;b;[Empty];c", 26, true, L';');
    EXPECT_EQ(Joined(list), L"a|b||c");
    list.FromMultiString("a;b;;c", 6, false, L';');
    EXPECT_EQ(Joined(list), L"a|b");
}

TEST(NKeyedList, LiesInMemoryInItsOrderOfFields) {
    using List = NKeyedList<Plain>;
    EXPECT_LT(offsetof(List, Items), offsetof(List, Keys));
    EXPECT_LT(offsetof(List, Keys), offsetof(List, Current));
}

TEST(NKeyedList, AddMakesARecordWithItsKeyAndTouchesIt) {
    NKeyedList<Counted> list;
    Counted* first = list.Add(L"one");
    Counted* second = list.Add();
    Counted* front = list.Add(L"zero", false, 0);
    EXPECT_EQ(list.Current, front);
    EXPECT_EQ(list[0], front);
    EXPECT_EQ(list[1], first);
    EXPECT_EQ(list[2], second);
    EXPECT_EQ(Joined(list.Keys), L"zero|one|");
    EXPECT_EQ(front->number, 7);
}

TEST(NKeyedList, EveryIndexedReadSetsCurrent) {
    NKeyedList<Counted> list;
    Counted* first = list.Add();
    list.Add();
    EXPECT_EQ(list[0], first);
    EXPECT_EQ(list.Current, first);
    EXPECT_EQ(list[2], nullptr);
    EXPECT_EQ(list[-1], nullptr);
    EXPECT_EQ(list.Current, first);
}

TEST(NKeyedList, RemovingTheCurrentRecordClearsCurrent) {
    NKeyedList<Counted> list;
    list.Add(L"a");
    Counted* second = list.Add(L"b");
    list.RemoveAt(0);
    EXPECT_EQ(list.Current, second);
    EXPECT_EQ(Joined(list.Keys), L"b");
    list.RemoveAt(0);
    EXPECT_EQ(list.Current, nullptr);
    list.RemoveAt(0);
    list.RemoveAt(-1);
    EXPECT_EQ(list.Count(), 0);
}

TEST(NKeyedList, DestroysItsRecords) {
    {
        NKeyedList<Counted> list;
        for (int index = 0; index < 20; ++index)
            list.Add(nullptr, false, -5);
        EXPECT_EQ(Counted::alive, 20);
        list.Clear();
        EXPECT_EQ(Counted::alive, 0);
        EXPECT_EQ(list.Current, nullptr);
        list.Add();
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(NKeyedList, ClearGoesFromTheLastRecordToTheFirst) {
    NString gone;
    Noting::gone = &gone;
    NKeyedList<Noting> list;
    for (wchar_t name : {L'a', L'b', L'c'})
        list.Add()->name = name;
    list.Clear();
    EXPECT_EQ(gone, L"cba");
    EXPECT_EQ(list.Items.Items, nullptr);
    EXPECT_EQ(list.Keys.Items, nullptr);
}

TEST(NKeyedList, ARecordsDestructorFindsTheListWithoutIt) {
    struct Asking {
        ~Asking() { *countAtEnd = list->Count(); }
        NKeyedList<Asking>* list = nullptr;
        int* countAtEnd = nullptr;
    };
    int count = -1;
    NKeyedList<Asking> list;
    for (int index = 0; index < 3; ++index) {
        Asking& record = *list.Add();
        record.list = &list;
        record.countAtEnd = &count;
    }
    list.RemoveAt(1);
    EXPECT_EQ(2, count);
    list.Clear();
    EXPECT_EQ(0, count);
}

TEST(NKeyedList, ARecordsDestructorMayRemoveAnother) {
    struct Pair {
        ~Pair() {
            if (list)
                list->RemoveAt(0);
        }
        NKeyedList<Pair>* list = nullptr;
    };
    NKeyedList<Pair> list;
    list.Add(L"goes with the third");
    list.Add(L"stays");
    list.Add(L"third")->list = &list;
    list.RemoveAt(2);
    ASSERT_EQ(1, list.Count());
    EXPECT_EQ(Joined(list.Keys), L"stays");
    EXPECT_EQ(nullptr, list.Current);
}

TEST(NKeyedList, ZeroFillWipesAPlainRecord) {
    NKeyedList<Plain> list;
    EXPECT_EQ(list.Add(nullptr, true)->number, 0);
}
