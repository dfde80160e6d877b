#pragma once

#include "foundation/windows_lean.h"

#include <unknwn.h>

// The platform's registrar (atl.dll), which runs registration scripts. The
// toolchain has no header for it; the interface is published by Microsoft as
// IRegistrar (atliface.h). Order of the operations as there.

// {44EC053A-400F-11D0-9DCD-00A0C90391D3}
inline constexpr CLSID CLSID_PlatformRegistrar = {
    0x44EC053A, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};

// {44EC053B-400F-11D0-9DCD-00A0C90391D3}
inline constexpr IID IID_IPlatformRegistrar = {
    0x44EC053B, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};

struct IPlatformRegistrar : IUnknown {
    // `%key%` in a script stands for `value`.
    virtual HRESULT STDMETHODCALLTYPE AddReplacement(LPCOLESTR key, LPCOLESTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearReplacements() = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegisterSz(LPCOLESTR file, LPCOLESTR id,
                                                         LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregisterSz(LPCOLESTR file, LPCOLESTR id,
                                                           LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileRegister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileUnregister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringRegister(LPCOLESTR script) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringUnregister(LPCOLESTR script) = 0;
    // Runs the script in the resource of a module's file.
    virtual HRESULT STDMETHODCALLTYPE ResourceRegister(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregister(LPCOLESTR file, UINT id,
                                                         LPCOLESTR type) = 0;

protected:
    ~IPlatformRegistrar() = default;
};
