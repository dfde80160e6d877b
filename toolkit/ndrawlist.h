#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nicon.h"
#include "toolkit/packed_coordinates.h"

#include <cstdint>

// A display list: what a row, an item or a tip looks like, told once as typed
// elements, and painted for any size and state. Coordinates are packed
// (packed_coordinates.h) and count from the edges and the middle of the area;
// colours are 0x00BBGGRR.
//
// An element with a `mask` shows only while all its bits are set in
// `stateMask`. Layers are painted from 0 up, and within one layer fills, boxes,
// gradients, frames, lines, bitmaps, icons and texts in this order, those of
// one type in the order of adding.
//
// The owner may set `stateMask` at any time; `dirty` too when it changes the
// margins or the minimum size. Between paints it may change the `text`,
// `colour` and `maxWidth` of texts. Each walk over a list takes all elements
// once for each layer, so it is meant for a few dozen of them. For one thread
// at a time.
class NDrawList {
public:
    struct Fill {
        uint32_t left = 0;
        uint32_t top = 0;
        uint32_t right = 0;
        uint32_t bottom = 0;
        COLORREF colour = 0;
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    struct Box {
        uint32_t left = 0;
        uint32_t top = 0;
        uint32_t right = 0;
        uint32_t bottom = 0;
        COLORREF fillColour = 0;
        COLORREF lineColour = 0;
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    struct Gradient {
        uint32_t left = 0;
        uint32_t top = 0;
        uint32_t right = 0;
        uint32_t bottom = 0;
        COLORREF topLeft = 0;
        COLORREF topRight = 0;
        COLORREF bottomLeft = 0;
        COLORREF bottomRight = 0;
        uint32_t mask = 0;
        uint32_t layer = 0;
        // The shaded rectangle, drawn anew when its size changes. Each list
        // makes its own.
        NCanvas cache = {};
        int32_t cachedWidth = 0;
        int32_t cachedHeight = 0;
    };

    struct Frame {
        uint32_t left = 0;
        uint32_t top = 0;
        uint32_t right = 0;
        uint32_t bottom = 0;
        COLORREF colour = 0;
        bool dotted = false; // as the focus is drawn, whatever the colour
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    // The end point isn't drawn.
    struct Line {
        COLORREF colour = 0;
        uint32_t x1 = 0;
        uint32_t y1 = 0;
        uint32_t x2 = 0;
        uint32_t y2 = 0;
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    struct Bitmap {
        NCanvas bitmap = {};
        uint32_t x = 0;
        uint32_t y = 0;
        DWORD rop = 0; // 0 is SRCCOPY
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    struct Icon {
        NIcon icon = {};
        uint32_t x = 0;
        uint32_t y = 0;
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    struct Text {
        uint32_t x = 0;
        uint32_t y = 0;
        NString text = {};
        NString fontFace = {}; // empty for that of NFont
        COLORREF colour = 0;
        bool bold = false;
        bool italic = false;
        bool underline = false;
        int32_t fontSize = 0; // 0 is 13
        int32_t maxWidth = 0; // pixels that FitText leaves it; 0 is no limit
        uint32_t mask = 0;
        uint32_t layer = 0;
    };

    NDrawList() = default;
    NDrawList(const NDrawList&) = delete;
    NDrawList& operator=(const NDrawList&) = delete;

    // Each copies the element, bitmaps and icons included; a gradient's cache
    // starts empty. With a `layer` of 0 it gets a layer of its own above all
    // others, whatever its field says; else that layer.
    void AddFill(const Fill& element, uint32_t layer = 0);
    void AddBox(const Box& element, uint32_t layer = 0);
    void AddFrame(const Frame& element, uint32_t layer = 0);
    void AddGradient(const Gradient& element, uint32_t layer = 0);
    void AddLine(const Line& element, uint32_t layer = 0);
    void AddBitmap(const Bitmap& element, uint32_t layer = 0);
    void AddIcon(const Icon& element, uint32_t layer = 0);
    void AddText(const Text& element, uint32_t layer = 0);

    // Empties the list. The size of the area stays.
    void Clear();
    // Clears, and adds copies of the other's elements, each one layer higher.
    // Margins, minimum size and state aren't copied. A list that copies itself
    // ends empty, which is wanted.
    void CopyFrom(const NDrawList& other);

    // The size that all elements need, hidden ones too, with the margins, and
    // at least the minimum size. It takes the area as of size 0: what counts
    // from the middle or the far edge counts from 0.
    SIZE Measure();
    // Paints with the area's top left at (x, y). If `dirty` is set, the area
    // first gets the measured size.
    void Paint(HDC dc, int x, int y);

    // The place of a packed coordinate in the area.
    int32_t Resolve(uint32_t value, bool horizontal, int32_t origin, int32_t ownSize) const;

    NKeyedList<Fill> fills;
    NKeyedList<Box> boxes;
    NKeyedList<Frame> frames;
    NKeyedList<Gradient> gradients;
    NKeyedList<Bitmap> bitmaps;
    NKeyedList<Line> lines;
    NKeyedList<Icon> icons;
    NKeyedList<Text> texts;
    int32_t areaWidth = 0;
    int32_t areaHeight = 0;
    int32_t dirty = 1;
    int32_t marginX = 0;
    int32_t marginY = 0;
    int32_t minWidth = 0;
    int32_t minHeight = 0;
    uint32_t layerCount = 0;
    uint32_t stateMask = 0;

private:
    uint32_t NextLayer(uint32_t layer);
    bool IsVisible(uint32_t mask) const { return (mask & stateMask) == mask; }
    void PaintLayer(HDC dc, int x, int y, uint32_t layer);
    template <typename Element>
    RECT ResolveRect(const Element& element, int x, int y) const;

    void PaintElement(HDC dc, int x, int y, const Fill& element) const;
    void PaintElement(HDC dc, int x, int y, const Box& element) const;
    void PaintElement(HDC dc, int x, int y, Gradient& element) const;
    void PaintElement(HDC dc, int x, int y, const Frame& element) const;
    void PaintElement(HDC dc, int x, int y, const Line& element) const;
    void PaintElement(HDC dc, int x, int y, const Bitmap& element) const;
    void PaintElement(HDC dc, int x, int y, const Icon& element) const;
    void PaintElement(HDC dc, int x, int y, const Text& element) const;

    // The furthest right and bottom that the element reaches.
    template <typename Element>
    SIZE ReachOf(const Element& element) const;
    SIZE ReachOf(const Line& element) const;
    SIZE ReachOf(const Bitmap& element) const;
    SIZE ReachOf(const Icon& element) const;
    SIZE ReachOf(const Text& element) const;
    LONG ReachOfPair(uint32_t first, uint32_t second, bool horizontal) const;
    SIZE ReachOfObject(uint32_t x, uint32_t y, SIZE size) const;
};
