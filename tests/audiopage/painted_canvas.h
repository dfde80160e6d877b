#pragma once

#include "tests/support/picture_compare.h"
#include "toolkit/nbrush.h"
#include "toolkit/ncanvas.h"

#include <gtest/gtest.h>

#include <ios>

// White paper to paint on.
class Paper {
public:
    Paper(int width, int height) {
        canvas_.Resize(width, height);
        Clear();
    }

    void Clear() {
        NBrush white;
        white.Solid(0xFFFFFF);
        canvas_.Fill(white.handle);
    }

    HDC Dc() const { return canvas_.dc; }
    Picture Seen() const { return ReadPicture(canvas_.dc, canvas_.Width(), canvas_.Height()); }

private:
    NCanvas canvas_;
};

// True if the two are the same to the pixel; else it tells of the first that
// isn't.
inline testing::AssertionResult SamePictures(const Picture& actual, const Picture& expected) {
    if (actual.width != expected.width || actual.height != expected.height)
        return testing::AssertionFailure() << actual.width << " x " << actual.height << " and "
                                           << expected.width << " x " << expected.height;
    for (int y = 0; y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            if (actual.At(x, y) != expected.At(x, y))
                return testing::AssertionFailure()
                       << std::hex << actual.At(x, y) << " in place of " << expected.At(x, y)
                       << std::dec << " at " << x << ", " << y;
        }
    }
    return testing::AssertionSuccess();
}
