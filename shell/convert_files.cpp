#include "shell/convert_files.h"

#include "foundation/module_instance.h"
#include "foundation/ndisk.h"
#include "foundation/npath.h"
#include "foundation/nprocess.h"
#include "shell/list_file.h"

namespace {
constexpr wchar_t ConverterName[] = L"WaveSmith.exe";
constexpr wchar_t ListOption[] = L"-list_to_conv=";
constexpr UINT FailureBox = MB_ICONERROR | MB_TOPMOST;

// "<module folder>WaveSmith.exe" -list_to_conv="<list file>"
NString ConverterCommand(const NString& listPath) {
    NString line = NQuote(NGetModuleFolder(NModuleInstance()).Concat(ConverterName));
    line.Append(L" ");
    line.Append(ListOption);
    line.Append(NQuote(listPath));
    return line;
}

bool StartConverter(const NString& listPath) {
    return NRunProcess(ConverterCommand(listPath), false, 0, false, NORMAL_PRIORITY_CLASS);
}
} // namespace

void ConvertFiles(const NStringList& selection) {
    // 1.
    if (selection.Count == 0)
        return;
    // 2.
    NString path = NNewListFileName();
    // 3.
    NFile listFile(path, GENERIC_WRITE, CREATE_ALWAYS, true, true);
    NHandToConverter(listFile, selection);
}

void NHandToConverter(NFile& listFile, const NStringList& selection) {
    // 4.
    bool handedOver = listFile.IsOpen() && NWriteFileList(listFile, selection);
    // 5. and 6. The file is still open here, and shared.
    if (handedOver && !StartConverter(listFile.Path)) {
        MessageBoxW(nullptr, L"Error running Wave Smith", L"Tonewright", FailureBox);
        handedOver = false;
    }
    // 7. to 9. On success the list file is the converter's. Otherwise it is
    // closed before it is deleted: as it isn't shared for deletion, nobody can
    // delete it while it is open, this module included.
    listFile.Close();
    if (!handedOver)
        NDeleteFile(listFile.Path);
}
