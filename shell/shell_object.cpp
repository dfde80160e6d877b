#include "shell/shell_object.h"

#include "foundation/com_owners.h"
#include "foundation/ndropfiles.h"
#include "shell/context_menu.h"
#include "shell/convert_files.h"
#include "shell/edit_entry.h"
#include "shell/property_sheet.h"
#include "shell/type_info.h"

#include <shellapi.h>

IUnknown* CtNWIShell::FindInterface(REFIID iid) {
    // The identity of the object is its first base, whatever is asked first.
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == IID_ItNWIShell)
        return static_cast<ItNWIShell*>(this);
    if (iid == IID_IShellExtInit)
        return static_cast<IShellExtInit*>(this);
    if (iid == IID_IContextMenu)
        return static_cast<IContextMenu*>(this);
    if (iid == IID_IShellPropSheetExt)
        return static_cast<IShellPropSheetExt*>(this);
    return nullptr;
}

STDMETHODIMP CtNWIShell::GetTypeInfoCount(UINT* count) {
    if (!count)
        return E_POINTER;
    *count = 1;
    return S_OK;
}

STDMETHODIMP CtNWIShell::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (!info)
        return E_POINTER;
    *info = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return ComGuarded([&] {
        ComPtr<ITypeInfo> loaded;
        HRESULT result = NLoadModuleTypeInfo(IID_ItNWIShell, loaded);
        *info = loaded.Release();
        return result;
    });
}

STDMETHODIMP CtNWIShell::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return ComGuarded([&] {
        ComPtr<ITypeInfo> info;
        HRESULT result = NLoadModuleTypeInfo(IID_ItNWIShell, info);
        return FAILED(result) ? result : info->GetIDsOfNames(names, count, ids);
    });
}

STDMETHODIMP CtNWIShell::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                VARIANT* returned, EXCEPINFO* exception, UINT* badArgument) {
    return ComGuarded([&] {
        ComPtr<ITypeInfo> info;
        HRESULT result = NLoadModuleTypeInfo(IID_ItNWIShell, info);
        return FAILED(result) ? result
                              : info->Invoke(static_cast<IDispatch*>(this), id, flags, parameters,
                                             returned, exception, badArgument);
    });
}

STDMETHODIMP CtNWIShell::Initialize(PCIDLIST_ABSOLUTE, IDataObject* dataObject, HKEY) {
    // 1. Emptied before any argument is looked at, so that a failing call
    // leaves no former selection behind.
    m_Selection.Clear();
    HRESULT result = ComGuarded([&] { return ReadSelection(dataObject); });
    if (FAILED(result))
        m_Selection.Clear();
    return result;
}

HRESULT CtNWIShell::ReadSelection(IDataObject* dataObject) {
    // 2. No object, no list.
    if (!dataObject)
        return E_INVALIDARG;

    // 3. What is asked for, and an empty medium for it.
    FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM filled = {};
    filled.tymed = TYMED_HGLOBAL;

    // 4. The object's own code isn't passed on, and a medium that it didn't
    // fill isn't released.
    if (FAILED(dataObject->GetData(&format, &filled)))
        return E_INVALIDARG;

    // 6. From here on the medium is released, whatever comes.
    StorageMedium medium(filled);

    // 5. The list is read while the block is locked.
    GlobalMemoryLock lock(medium.Global());
    if (lock)
        NDropFilesRead(static_cast<HDROP>(medium.Global()), m_Selection);

    // 7. An empty list is a list.
    return lock ? S_OK : E_INVALIDARG;
}

STDMETHODIMP CtNWIShell::QueryContextMenu(HMENU menu, UINT index, UINT firstCommand, UINT,
                                          UINT flags) {
    return ComGuarded([&] { return HRESULT{NAddMenuItems(menu, index, firstCommand, flags)}; });
}

STDMETHODIMP CtNWIShell::InvokeCommand(CMINVOKECOMMANDINFO* command) {
    if (!command)
        return E_INVALIDARG;
    return ComGuarded([&] {
        int offset = NCommandOf(command->lpVerb);
        if (offset == NoCommand)
            return E_INVALIDARG;
        // What becomes of the command is no part of the result: wanted.
        ComGuarded([&] {
            RunCommand(offset);
            return S_OK;
        });
        return S_OK;
    });
}

void CtNWIShell::RunCommand(int offset) {
    if (offset == CommandConvert)
        ConvertFiles(m_Selection);
    else
        EditFiles(m_Selection);
}

STDMETHODIMP CtNWIShell::GetCommandString(UINT_PTR command, UINT type, UINT*, CHAR* name,
                                          UINT capacity) {
    return ComGuarded([&] { return NCommandText(command, type, name, capacity); });
}

STDMETHODIMP CtNWIShell::AddPages(LPFNSVADDPROPSHEETPAGE addPage, LPARAM parameter) {
    return ComGuarded([&] {
        AddPropertyPages(m_Selection, addPage, parameter);
        return S_OK;
    });
}

STDMETHODIMP CtNWIShell::ReplacePage(EXPPS, LPFNSVADDPROPSHEETPAGE, LPARAM) {
    return E_NOTIMPL;
}
