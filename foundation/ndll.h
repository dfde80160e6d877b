#pragma once

#include "foundation/windows_lean.h"

// Base of a binding to a library that is loaded at run time. A derived class
// keeps the library's functions in pointers, and its Load fills them. The order
// of the fields and of the virtual operations is part of the contract.
//
// Owns the loaded library. Not for two threads at a time.
class NDLL {
public:
    NDLL() = default;
    NDLL(const NDLL&) = delete;
    NDLL& operator=(const NDLL&) = delete;
    // Frees the library, not what a derived class made with it.
    virtual ~NDLL();

    // Loads the library at `path`, binds the wanted functions, and returns
    // `Loaded`. For null there is nothing to load: all functions are null.
    virtual bool Load(const wchar_t* path) = 0;

    HMODULE Module = nullptr; // null while nothing is loaded
    bool Loaded = false;      // every wanted function was found

protected:
    // Takes the library into `Module`, which is null before. Null after it on
    // failure, about which the platform shows no box of its own.
    bool LoadModule(const wchar_t* path);
    // `Module` is null after it.
    void UnloadModule();
    // Sets the function to the one exported by that name; null without a
    // library, or if it has none of that name. True if it isn't null.
    template <typename Function>
    bool Bind(const char* name, Function*& function) const {
        function = Module ? reinterpret_cast<Function*>(GetProcAddress(Module, name)) : nullptr;
        return function != nullptr;
    }
};
