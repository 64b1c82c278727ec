#pragma once

#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Host/Errors.h>

#include <string>

namespace Corvane::Rasterloom {

class Validator {
public:
    /// Fails with `Host::ArgumentException` for the argument `name` when `value` has no name in its enumeration. Every
    /// enumeration that a host passes in goes through here.
    template <class E>
    static void ValidateEnum(const char* name, E value) {
        if (ToString(value).empty()) {
            throw Host::ArgumentException("Enumeration value has an inappropriate value.", name);
        }
    }
};

} // namespace Corvane::Rasterloom
