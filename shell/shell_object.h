#pragma once

#include "foundation/nlists.h"
#include "shell/com_object.h"
#include "shell/shell_ids.h"

#include <oaidl.h>
#include <shlobj.h>
#include <shobjidl.h>

// The dual automation interface of the class: an IDispatch without members of
// its own.
struct ItNWIShell : IDispatch {
protected:
    ~ItNWIShell() = default;
};

// What the desktop shell creates for the files that the user has selected: it
// is told of them by Initialize, and then asked for menu items or pages.
//
// The shell owns it by reference count; the pages live on without it. It lives
// in one apartment (`Apartment` model): no lock, and a plain count. Its forms
// that can be created are ComObject<CtNWIShell> and ComAggregated<CtNWIShell>.
class CtNWIShell : public ItNWIShell,
                   public IShellExtInit,
                   public IContextMenu,
                   public IShellPropSheetExt,
                   public ComCounted,
                   public ComCreatable<CtNWIShell> {
public:
    IUnknown* FindInterface(REFIID iid);

    // IDispatch, from the type library in the module's resources. Without it
    // the three operations that need it return the loader's failing code.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

    // Replaces `m_Selection` by the drop list (CF_HDROP) of `dataObject`; the
    // folder and the key play no part. E_INVALIDARG, with an empty selection,
    // if there is no such list; an empty one is a list. E_OUTOFMEMORY, with an
    // empty selection, if the texts don't fit into memory.
    STDMETHODIMP Initialize(PCIDLIST_ABSOLUTE folder, IDataObject* dataObject,
                            HKEY progIdKey) override;

    // Adds the module's items, whatever is selected, and returns their plain
    // number. `lastCommand` isn't looked at: wanted.
    STDMETHODIMP QueryContextMenu(HMENU menu, UINT index, UINT firstCommand, UINT lastCommand,
                                  UINT flags) override;
    // Runs a command on `m_Selection`. S_OK whatever happens in it, for its
    // failures are told to the user or to nobody; E_INVALIDARG if there is no
    // such command. Nothing but the command's `lpVerb` is used.
    STDMETHODIMP InvokeCommand(CMINVOKECOMMANDINFO* command) override;
    // The verb or the help text; see NCommandText.
    STDMETHODIMP GetCommandString(UINT_PTR command, UINT type, UINT* reserved, CHAR* name,
                                  UINT capacity) override;

    // Offers the page "Audio Properties" for the selection, none for an empty
    // one. S_OK whatever becomes of it; E_OUTOFMEMORY alone is told.
    STDMETHODIMP AddPages(LPFNSVADDPROPSHEETPAGE addPage, LPARAM parameter) override;
    // No page of the shell's is ever replaced: E_NOTIMPL.
    STDMETHODIMP ReplacePage(EXPPS page, LPFNSVADDPROPSHEETPAGE replaceWith,
                             LPARAM parameter) override;

    // Full paths in the order in which the shell delivered them, folders and
    // unknown file types included.
    NStringList m_Selection;

protected:
    CtNWIShell() = default;
    ~CtNWIShell() = default;

private:
    HRESULT ReadSelection(IDataObject* dataObject);
    void RunCommand(int offset);
};
