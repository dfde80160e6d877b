#include "suite/shellhost/png_file.h"

#include "suite/shellhost/gdi_plus.h"

#include <memory>

namespace {
// GDI+ is there while this lives.
class GdiPlusSession {
public:
    GdiPlusSession() {
        Gdiplus::GdiplusStartupInput input;
        isStarted_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiPlusSession() {
        if (isStarted_)
            Gdiplus::GdiplusShutdown(token_);
    }
    GdiPlusSession(const GdiPlusSession&) = delete;
    GdiPlusSession& operator=(const GdiPlusSession&) = delete;

    explicit operator bool() const { return isStarted_; }

private:
    ULONG_PTR token_ = 0;
    bool isStarted_ = false;
};

// The encoder of PNG, by its documented id.
constexpr CLSID PngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
} // namespace

bool WritePng(HBITMAP bitmap, const NString& path) {
    const GdiPlusSession session;
    if (!session)
        return false;
    const std::unique_ptr<Gdiplus::Bitmap> picture(Gdiplus::Bitmap::FromHBITMAP(bitmap, nullptr));
    return picture && picture->GetLastStatus() == Gdiplus::Ok &&
           picture->Save(path.c_str(), &PngEncoder, nullptr) == Gdiplus::Ok;
}
