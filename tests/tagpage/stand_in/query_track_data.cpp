// Takes the place of QueryTrackData.exe beside the page's tests. What it is to
// do stands in the folder that TONEWRIGHT_SCRIPTED_TAGS names, and what it was
// asked goes there (tag_script.h). Without that folder it does nothing.
#include "tests/support/stand_in_program.h"
#include "tests/tagpage/stand_in/tag_script.h"

#include <cstdlib>
#include <exception>

int main() try {
    const std::wstring folder = Environment(L"TONEWRIGHT_SCRIPTED_TAGS");
    if (folder.empty())
        return EXIT_FAILURE;
    const unsigned code = AnswerTagRequest(folder, GetCommandLineW());
    if (code == TagScriptDied)
        TerminateProcess(GetCurrentProcess(), code);
    return static_cast<int>(code);
} catch (const std::exception&) {
    return EXIT_FAILURE;
}
