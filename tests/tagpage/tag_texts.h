#pragma once

#include "codec/tag_record.h"

#include <initializer_list>
#include <string>
#include <vector>

// Tags as tests write and read them.
using Texts = std::vector<std::wstring>;

struct TagText {
    const wchar_t* name;
    const wchar_t* value;
};

inline void FillTag(clTagRecord& tag, std::initializer_list<TagText> elements) {
    for (const TagText& element : elements)
        tag.Add(element.name, element.value);
}

// Each element as "name=value", in order; one with data as "name=value:data",
// each byte of them as a character.
inline Texts TextsOf(clTagRecord& tag) {
    Texts texts;
    for (int index = 0; index < tag.Count(); ++index) {
        const clTagElement& element = *tag[index];
        std::wstring text = std::wstring(element.Name.Text) + L"=" + element.Value.Text;
        if (element.Data.Size > 0)
            text += L":" + std::wstring(element.Data.Data, element.Data.Data + element.Data.Size);
        texts.push_back(text);
    }
    return texts;
}
