#pragma once

#include "toolkit/ncanvas.h"

using GradientFillFunction = decltype(&::GradientFill);
// Where the platform's function comes from; null where it has none. Asked only
// when a line of two colours is to be drawn.
using GradientFillSource = GradientFillFunction (*)();

// Of the library that is loaded at the first call.
GradientFillFunction PlatformGradientFill();

// Both draw on `dc`, or on the canvas itself for null, and nothing at all
// without a canvas that has a device context. Right and bottom edges belong to
// what is drawn. Colours are 0x00BBGGRR.

// Shades a rectangle, null for the whole canvas, between the colours of its
// corners: by columns if the upper corners are as the lower ones, else row by
// row. The last colours stand on the right and bottom edges, which for the
// whole canvas are just outside.
void GradientRect(NCanvas* canvas, HDC dc, const RECT* rect, COLORREF topLeft, COLORREF topRight,
                  COLORREF bottomLeft, COLORREF bottomRight,
                  GradientFillSource source = PlatformGradientFill);

// Shades one row of pixels. Equal colours give a plain line.
void GradientLine(NCanvas* canvas, HDC dc, int left, int right, int y, COLORREF startColour,
                  COLORREF endColour, GradientFillSource source = PlatformGradientFill);
