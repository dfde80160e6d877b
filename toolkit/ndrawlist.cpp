#include "toolkit/ndrawlist.h"

#include "toolkit/draw_list_walk.h"

#include <algorithm>

namespace {
// Copies the bits, also while `from` is selected, as a canvas mostly is: then
// its bitmap can't be selected a second time.
void CopyCanvas(const NCanvas& from, NCanvas& to) {
    if (!from.dc)
        to.LoadCopy(from.handle);
    else if (to.Resize(from.Width(), from.Height()))
        from.Blit(to.dc, 0, 0);
}
} // namespace

uint32_t NDrawList::NextLayer(uint32_t layer) {
    const uint32_t given = layer ? layer : layerCount++;
    layerCount = std::max(layerCount, layer + 1);
    dirty = 1;
    return given;
}

void NDrawList::AddFill(const Fill& element, uint32_t layer) {
    Fill* record = fills.Add();
    *record = element;
    record->layer = NextLayer(layer);
}

void NDrawList::AddBox(const Box& element, uint32_t layer) {
    Box* record = boxes.Add();
    *record = element;
    record->layer = NextLayer(layer);
}

void NDrawList::AddFrame(const Frame& element, uint32_t layer) {
    Frame* record = frames.Add();
    *record = element;
    record->layer = NextLayer(layer);
}

void NDrawList::AddGradient(const Gradient& element, uint32_t layer) {
    Gradient* record = gradients.Add();
    record->left = element.left;
    record->top = element.top;
    record->right = element.right;
    record->bottom = element.bottom;
    record->topLeft = element.topLeft;
    record->topRight = element.topRight;
    record->bottomLeft = element.bottomLeft;
    record->bottomRight = element.bottomRight;
    record->mask = element.mask;
    record->layer = NextLayer(layer);
}

void NDrawList::AddLine(const Line& element, uint32_t layer) {
    Line* record = lines.Add();
    *record = element;
    record->layer = NextLayer(layer);
}

void NDrawList::AddBitmap(const Bitmap& element, uint32_t layer) {
    Bitmap* record = bitmaps.Add();
    CopyCanvas(element.bitmap, record->bitmap);
    record->x = element.x;
    record->y = element.y;
    record->rop = element.rop;
    record->mask = element.mask;
    record->layer = NextLayer(layer);
}

void NDrawList::AddIcon(const Icon& element, uint32_t layer) {
    Icon* record = icons.Add();
    record->icon.Copy(element.icon);
    record->x = element.x;
    record->y = element.y;
    record->mask = element.mask;
    record->layer = NextLayer(layer);
}

void NDrawList::AddText(const Text& element, uint32_t layer) {
    Text* record = texts.Add();
    *record = element;
    record->layer = NextLayer(layer);
}

void NDrawList::Clear() {
    ForEachList(*this, [](auto& list) { list.Clear(); });
    marginX = 0;
    marginY = 0;
    minWidth = 0;
    minHeight = 0;
    layerCount = 0;
    stateMask = 0;
    dirty = 1;
}

void NDrawList::CopyFrom(const NDrawList& other) {
    Clear(); // of itself, nothing is left to copy then; this is wanted
    // One layer up, since a layer of 0 would ask for a layer of its own. So
    // layer 0 stays empty.
    ForEachElement(other.fills, [this](const Fill& each) { AddFill(each, each.layer + 1); });
    ForEachElement(other.boxes, [this](const Box& each) { AddBox(each, each.layer + 1); });
    ForEachElement(other.frames, [this](const Frame& each) { AddFrame(each, each.layer + 1); });
    ForEachElement(other.gradients,
                   [this](const Gradient& each) { AddGradient(each, each.layer + 1); });
    ForEachElement(other.bitmaps, [this](const Bitmap& each) { AddBitmap(each, each.layer + 1); });
    ForEachElement(other.lines, [this](const Line& each) { AddLine(each, each.layer + 1); });
    ForEachElement(other.icons, [this](const Icon& each) { AddIcon(each, each.layer + 1); });
    ForEachElement(other.texts, [this](const Text& each) { AddText(each, each.layer + 1); });
}

int32_t NDrawList::Resolve(uint32_t value, bool horizontal, int32_t origin, int32_t ownSize) const {
    return ResolvePacked(value, horizontal ? areaWidth : areaHeight, origin, ownSize);
}
