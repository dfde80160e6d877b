#pragma once

// Gives the screen, and all that fits it, this many pixels per inch from top to
// bottom for the time of the scope, for code that asks GetDeviceCaps. A program
// that uses it is linked with --wrap=__imp_GetDeviceCaps.
class ScreenResolution {
public:
    explicit ScreenResolution(int linesPerInch);
    ~ScreenResolution();
    ScreenResolution(const ScreenResolution&) = delete;
    ScreenResolution& operator=(const ScreenResolution&) = delete;
};
