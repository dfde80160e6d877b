#pragma once

#include "foundation/windows_lean.h"

#include <new>
#include <utility>

// Runs the body of a COM entry point. No exception may cross into the caller,
// who may be built by another compiler: a failed allocation becomes
// E_OUTOFMEMORY, anything else E_UNEXPECTED.
template <typename Body>
HRESULT ComGuarded(Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}
