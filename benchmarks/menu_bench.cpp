#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "foundation/com_owners.h"
#include "foundation/unique_handle.h"
#include "suite/shellhost/module_host.h"

#include <shlobj.h>

#include <cstdio>

namespace {
constexpr int Rounds = 60;
constexpr int MenusInARound = 8;
constexpr int ManyFiles = 10000;
constexpr UINT FirstCommand = 1;
constexpr UINT LastCommand = 0x7FFF;

struct MenuTraits {
    using Handle = HMENU;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyMenu(handle); }
};
using UniqueMenu = UniqueHandle<MenuTraits>;

struct BitmapTraits {
    using Handle = HBITMAP;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DeleteObject(handle); }
};
using UniqueBitmap = UniqueHandle<BitmapTraits>;

// The module leaves the pictures to who has the menu.
void FreePictures(HMENU menu) {
    for (int item = 0; item < GetMenuItemCount(menu); ++item) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_CHECKMARKS;
        GetMenuItemInfoW(menu, static_cast<UINT>(item), TRUE, &info);
        UniqueBitmap picture(info.hbmpUnchecked);
    }
}

// One object of the module, and the selection that it was made for.
class Selection {
public:
    bool Make(const NString& module, int files) {
        NStringList paths;
        for (int index = 0; index < files; ++index) {
            NString path(L"C:\\a folder of music\\");
            path.Append(NString::FromUInt(static_cast<uint32_t>(index)));
            path.Append(L".flac"); // isn't there: nothing looks at it
            paths.Add(path);
        }
        return host_.LoadFrom(module.Text) && host_.Select(paths) &&
               host_.GetInterface(IID_IContextMenu, menu_.PutVoid());
    }

    // The seconds that the module takes to fill some menus.
    double FillMenus() {
        double seconds = 0;
        for (int count = 0; count < MenusInARound; ++count) {
            UniqueMenu menu(CreatePopupMenu());
            seconds += SecondsOf([&] {
                menu_->QueryContextMenu(menu.Get(), 0, FirstCommand, LastCommand, CMF_NORMAL);
            });
            itemsFilled_ += GetMenuItemCount(menu.Get());
            FreePictures(menu.Get());
        }
        return seconds;
    }

    int ItemsFilled() const { return itemsFilled_; }
    const NString& Problem() const { return host_.Problem(); }

private:
    ModuleHost host_;
    ComPtr<IContextMenu> menu_;
    int itemsFilled_ = 0;
};
} // namespace

bool BenchMenu(const BenchPlaces& places) {
    Selection one;
    Selection many;
    if (!one.Make(places.Module(), 1) || !many.Make(places.Module(), ManyFiles)) {
        fprintf(stderr, "%ls%ls\n", one.Problem().Text, many.Problem().Text);
        return false;
    }
    MedianPair time = MeasureTimedPair(
        Rounds, [&] { return many.FillMenus(); }, [&] { return one.FillMenus(); });
    if (one.ItemsFilled() == 0 || one.ItemsFilled() != many.ItemsFilled()) {
        fprintf(stderr, "the module fills no menu\n");
        return false;
    }
    PrintTime("QueryContextMenu with 10,000 files", time.subject / MenusInARound);
    PrintTime("QueryContextMenu with 1 file", time.yardstick / MenusInARound);
    PrintRatio(time.Ratio(), "1, but for noise");
    return true;
}
