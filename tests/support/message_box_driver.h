#pragma once

#include "foundation/nstring.h"
#include "tests/support/dialog_hook.h"

#include <functional>
#include <vector>

// What a message box showed.
struct SeenBox {
    NString text;
    NString caption;
    // MB_ flags that its buttons and its icon amount to: MB_RETRYCANCEL or
    // MB_OK, MB_ICONINFORMATION or MB_ICONERROR; NotKnown for any others.
    UINT type;
    bool hasOwner;

    static constexpr UINT NotKnown = 0xFFFFFFFF;
};

// Answers the message boxes of this thread by itself: with the button ids of
// `answers` in turn, and with Cancel or OK when they are used up.
class MessageBoxDriver {
public:
    explicit MessageBoxDriver(std::vector<int> answers = {});

    // Called with the box's number, from 0, before it is answered.
    std::function<void(size_t)> beforeAnswer;

    const std::vector<SeenBox>& Boxes() const { return boxes_; }

private:
    void Answer(HWND box);

    std::vector<int> answers_;
    std::vector<SeenBox> boxes_;
    DialogHook hook_;
};
