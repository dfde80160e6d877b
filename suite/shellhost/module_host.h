#pragma once

#include "foundation/com_owners.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"

// The module as a shell holds it: its class factory, and, after Select, one
// object with a selection. Uses COM on the thread that made it; an OleSession
// must outlive it.
//
// After loading, the module's folder is the one where the tag exchange of this
// program looks for its sibling (NModuleInstance).
class ModuleHost {
public:
    ModuleHost() = default;
    ~ModuleHost();
    ModuleHost(const ModuleHost&) = delete;
    ModuleHost& operator=(const ModuleHost&) = delete;

    // By the class id, as the shell creates it. False on failure; `Problem`
    // says why.
    bool LoadRegistered();
    // Through DllGetClassObject of the module at `path`, registered or not.
    bool LoadFrom(const wchar_t* path);

    // Makes a new object and initialises it with a drop list of `paths`, which
    // are full ones.
    bool Select(const NStringList& paths);
    // An interface of that object, with a reference for the caller.
    bool GetInterface(REFIID iid, void** object);

    // The module's full path.
    const NString& Path() const { return path_; }
    const NString& Problem() const { return problem_; }

private:
    bool Adopt(HMODULE module);
    bool Fail(const wchar_t* what, HRESULT result);

    // In this order: the objects must be gone before their code.
    UniqueModule library_;
    ComPtr<IClassFactory> factory_;
    ComPtr<IUnknown> object_;
    NString path_;
    NString problem_;
};
