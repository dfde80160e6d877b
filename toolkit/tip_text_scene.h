#pragma once

struct NToolTipText;
class NDrawList;

// Draws a tip of one text into an empty scene: the text, with its icon before
// it, in a black frame. The scene is painted in the state TipFlat or
// TipShaded.
void BuildTipTextScene(NDrawList& scene, const NToolTipText& record);
