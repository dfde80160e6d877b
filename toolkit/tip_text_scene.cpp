#include "toolkit/tip_text_scene.h"

#include "toolkit/ndrawlist.h"
#include "toolkit/ntooltip.h"
#include "toolkit/tip_placement.h"

namespace {
constexpr COLORREF FlatColour = 0xCFFFFF;
constexpr COLORREF LeftColour = 0xFFFFFF;
constexpr COLORREF RightColour = 0xCDFFFF;
constexpr COLORREF FrameColour = 0x000000;

constexpr uint32_t Centred = AnchorMiddle | MinusHalf;
constexpr uint32_t IconX = 4;
constexpr uint32_t IconYBesideLines = 1;
constexpr uint32_t TextXBehindIcon = 8; // and the icon's width
constexpr uint32_t TextXAlone = 5;

void AddGround(NDrawList& scene) {
    scene.AddFill({.right = AnchorFar, .bottom = AnchorFar, .colour = FlatColour, .mask = TipFlat});
    scene.AddGradient({.right = AnchorFar,
                       .bottom = AnchorFar,
                       .topLeft = LeftColour,
                       .topRight = RightColour,
                       .bottomLeft = LeftColour,
                       .bottomRight = RightColour,
                       .mask = TipShaded});
    scene.AddFrame({.right = AnchorFar, .bottom = AnchorFar, .colour = FrameColour});
}

void AddIcon(NDrawList& scene, const NToolTipText& record) {
    NDrawList::Icon element;
    element.icon.Copy(*record.icon);
    element.x = IconX;
    element.y = record.text.FindChar(L'\r') ? IconYBesideLines : Centred;
    scene.AddIcon(element);
}
} // namespace

void BuildTipTextScene(NDrawList& scene, const NToolTipText& record) {
    // 1. to 3.
    AddGround(scene);
    // 4.
    uint32_t textX = TextXAlone;
    if (record.icon) {
        AddIcon(scene, record);
        textX = static_cast<uint32_t>(record.icon->Width()) + TextXBehindIcon;
    }
    // 5.
    scene.AddText({.x = textX, .y = Centred, .text = record.text});
}
