// The pictures of the pages in the module that was built.
#include "tests/shell/loaded_module.h"
#include "toolkit/gdi_owners.h"

#include <gtest/gtest.h>

namespace {
struct SizeCase {
    WORD id;
    int width;
    int height;
};

SIZE SizeOfBitmap(HMODULE module, WORD id) {
    const UniqueBitmap bitmap(static_cast<HBITMAP>(
        LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    BITMAP record = {};
    GetObjectW(bitmap.Get(), sizeof(record), &record);
    return {record.bmWidth, record.bmHeight};
}

// What a group of icons tells of its first one.
#pragma pack(push, 2)
struct IconGroup {
    WORD reserved;
    WORD type;
    WORD count;
    BYTE width;
    BYTE height;
};
#pragma pack(pop)

const IconGroup* FindIcons(HMODULE module, WORD id) {
    const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(id), RT_GROUP_ICON);
    return place ? static_cast<const IconGroup*>(LockResource(LoadResource(module, place)))
                 : nullptr;
}
} // namespace

TEST(PageResources, BitmapsHaveTheirNumbersAndSizes) {
    const LoadedModule module;
    const SizeCase cases[] = {
        {215, 68, 34},  {216, 68, 34},  {217, 240, 34}, {218, 68, 34},
        {219, 68, 34},  {220, 68, 34},  {221, 32, 14},  {236, 99, 90},
        {228, 240, 34}, {229, 220, 34}, {230, 220, 34}, {231, 220, 34},
    };
    for (const SizeCase& one : cases) {
        const SIZE size = SizeOfBitmap(module.Handle(), one.id);
        EXPECT_EQ(size.cx, one.width) << one.id;
        EXPECT_EQ(size.cy, one.height) << one.id;
    }
}

TEST(PageResources, IconsHaveTheirNumbersAndSizes) {
    const LoadedModule module;
    const SizeCase cases[] = {
        {212, 16, 16}, {213, 16, 16}, {223, 16, 16}, {224, 16, 16},
        {226, 16, 16}, {227, 16, 16}, {235, 32, 32},
    };
    for (const SizeCase& one : cases) {
        const IconGroup* icons = FindIcons(module.Handle(), one.id);
        ASSERT_NE(icons, nullptr) << one.id;
        EXPECT_EQ(icons->count, 1) << one.id;
        EXPECT_EQ(icons->width, one.width) << one.id;
        EXPECT_EQ(icons->height, one.height) << one.id;
    }
}
