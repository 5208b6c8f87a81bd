// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"

#include <dlfcn.h>

namespace trovarium {

// A library that is loaded when it is first needed, so that the program starts sooner and works without it. Once loaded
// it stays.
class DynamicLibrary {
public:
    // The address of a function; converts to a pointer of its type.
    struct Symbol {
        void* address;

        template <class Function>
        operator Function*() const // NOLINT(google-explicit-constructor)
        {
            return reinterpret_cast<Function*>(address);
        }
    };

    explicit DynamicLibrary(const char* name) // "Device unavailable"
        : m_handle(dlopen(name, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE))
    {
        if (m_handle == nullptr)
            throw Failure(FailureKind::DeviceUnavailable);
    }

    // Of the library or one that it depends on; null where there is none.
    Symbol find(const char* name) const { return {dlsym(m_handle, name)}; }

    Symbol operator[](const char* name) const // "Device unavailable"
    {
        const Symbol symbol = find(name);
        if (symbol.address == nullptr)
            throw Failure(FailureKind::DeviceUnavailable);
        return symbol;
    }

private:
    void* m_handle;
};

} // namespace trovarium
