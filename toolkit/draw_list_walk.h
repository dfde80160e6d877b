#pragma once

#include "toolkit/ndrawlist.h"

// Neither touches a list's `Current`.

template <typename Element, typename Do>
void ForEachElement(const NKeyedList<Element>& list, Do perform) {
    for (int i = 0; i < list.Count(); ++i)
        perform(*static_cast<Element*>(list.Items.At(i)));
}

// The lists in the order in which one layer is painted, which is not that of
// the members.
template <typename Do>
void ForEachList(NDrawList& scene, Do perform) {
    perform(scene.fills);
    perform(scene.boxes);
    perform(scene.gradients);
    perform(scene.frames);
    perform(scene.lines);
    perform(scene.bitmaps);
    perform(scene.icons);
    perform(scene.texts);
}
