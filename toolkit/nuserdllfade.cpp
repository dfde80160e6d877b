#include "toolkit/nuserdllfade.h"

#include <mutex>

namespace {
NUserDLLFade processFade;
std::once_flag processFadeTried;
} // namespace

bool NUserDLLFade::Load(const wchar_t* name) {
    if (Loaded)
        return true;
    LoadModule(name);
    Loaded = Module != nullptr;
    Bind("SetLayeredWindowAttributes", setLayeredWindowAttributes);
    return Loaded;
}

void NUserDLLFade::SetAlpha(HWND window, int32_t alpha) const {
    if (setLayeredWindowAttributes)
        setLayeredWindowAttributes(window, 0, static_cast<BYTE>(alpha), LWA_ALPHA);
}

const NUserDLLFade& NProcessFade() {
    std::call_once(processFadeTried, [] { processFade.Load(L"user32.dll"); });
    return processFade;
}
