#pragma once

#include <dlfcn.h>

namespace ImagingFramework {

/// A shared library of the system that the program may well do without, loaded while this lives.
class DynamicLibrary {
public:
    explicit DynamicLibrary(const char* name) : m_hLibrary(::dlopen(name, RTLD_LAZY | RTLD_LOCAL)) {}
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;
    ~DynamicLibrary() {
        if (m_hLibrary != nullptr) {
            ::dlclose(m_hLibrary);
        }
    }

    /// Sets `function` to the one of that name; false where there is no library, or no such function in it.
    template <class Function>
    bool Find(const char* name, Function*& function) const {
        function = m_hLibrary != nullptr ? reinterpret_cast<Function*>(::dlsym(m_hLibrary, name)) : nullptr;
        return function != nullptr;
    }

private:
    void* m_hLibrary;
};

} // namespace ImagingFramework
