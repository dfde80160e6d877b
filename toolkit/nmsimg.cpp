#include "toolkit/nmsimg.h"

#include <mutex>

namespace {
NMsImgDLL processMsImg;
std::once_flag processMsImgTried;
} // namespace

bool NMsImgDLL::Load(const wchar_t* name) {
    if (Loaded)
        return true;
    LoadModule(name);
    Loaded = Module != nullptr;
    Bind("TransparentBlt", transparentBlt);
    Bind("GradientFill", gradientFill);
    return Loaded;
}

const NMsImgDLL& NProcessMsImg() {
    // A page's reading thread and its window may both be the first.
    std::call_once(processMsImgTried, [] { processMsImg.Load(L"Msimg32.dll"); });
    return processMsImg;
}
