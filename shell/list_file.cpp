#include "shell/list_file.h"

#include "foundation/ntempfile.h"

NString NNewListFileName() {
    // The file itself goes with this object: the name is all that is wanted.
    NTempFile made("tNS");
    return made;
}

bool NWriteFileList(NFile& file, const NStringList& paths) {
    for (int index = 0; index < paths.Count; ++index) {
        // As one text, since a line end that fails must not pass unseen.
        NString line(*paths[index]);
        line.Append(L"\r\n");
        if (!file.WriteString(line.Text, false))
            return false;
    }
    return true;
}
