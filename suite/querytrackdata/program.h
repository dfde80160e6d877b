#pragma once

// The whole program, from wmain's arguments to the exit code: 0 when the
// request was carried out, 1 with a line on standard error when it wasn't. What
// a format can't hold of a request is no failure, and has a line too.
// Lets no exception out.
int RunQueryTrackData(int count, const wchar_t* const* arguments) noexcept;
