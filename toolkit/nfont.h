#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <cstdint>

// The platform's macro would rename NFont::DrawText; its function is called by
// its own name, DrawTextW.
#undef DrawText

// Owner of one font, with the colours it writes in and its selection into a
// device context, which must outlive the selection. Sizes are pixels, colours
// 0x00BBGGRR.
//
// Measuring and drawing work on `dc`, and do nothing, or return 0, without
// one. A font that isn't selected is selected for the call.
class NFont {
public:
    NFont() = default;
    NFont(const NFont&) = delete;
    NFont& operator=(const NFont&) = delete;
    ~NFont() { Release(); }

    // Deselects, and deletes the font. May be called again.
    void Release();

    // Makes a font in place of the earlier one, to be used on `target`; it
    // isn't selected yet. `face` is in the narrow code page; null, empty, or
    // 32 bytes and more stand for "Tahoma". `height` and `width` are those of
    // LOGFONTW, `escapement` is in tenths of a degree. `transparent` leaves
    // what is between the strokes; else the background colour of the device
    // context shows there. `gap` is added between the lines of a text.
    bool Create(HDC target, const char* face, int height, COLORREF colour, int width = 0,
                bool bold = false, bool italic = false, bool underline = false,
                bool isTransparent = true, int escapement = 0, int gap = 0);

    // Deselects, then selects the font, its colour and its background mode
    // into `target`, which becomes `dc`.
    void Select(HDC target);
    // Puts font, colour and mode back as they were. `dc` stays.
    void Deselect();
    // At once if the font is selected.
    void SetColour(COLORREF colour);

    // With `multiLine` the widest line of the text, which is split at carriage
    // returns (line feeds behind one are skipped). With a `tabOffset` other
    // than 0 its tab stops stand 8 average characters apart, for a text that
    // begins `tabOffset` pixels from the left; else where the platform sets
    // them. Without `multiLine` all units are measured as characters.
    int TextWidth(const NString& text, bool multiLine = false, int tabOffset = 0);
    int TextWidth(HDC target, const NString& text, bool multiLine = false, int tabOffset = 0);
    // The height of "Ay" for each line, whatever it holds, and `lineGap`
    // between them; 0 for a text of no lines.
    int TextHeight(const NString& text, bool multiLine = false);
    int TextHeight(HDC target, const NString& text, bool multiLine = false);

    // With its top left at (x, y). `clip`, which a font that isn't transparent
    // fills with the background colour, holds for a single line alone.
    void DrawText(int x, int y, const NString& text, const RECT* clip = nullptr,
                  bool multiLine = false);

    bool selected = false;
    HDC dc = nullptr;
    HGDIOBJ previousFont = nullptr;
    COLORREF previousColour = 0;
    int previousBkMode = 0;
    bool transparent = false;
    HFONT handle = nullptr;
    LOGFONTW logFont = {}; // what made the font
    COLORREF textColour = 0;
    int lineGap = 0;

private:
    void DrawLine(int x, int y, const NString& text, const RECT* clip);
    void DrawLines(int x, int y, const NString& text);
};
