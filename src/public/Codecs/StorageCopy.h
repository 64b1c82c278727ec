#pragma once

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "metadata/IDictionary.h"

#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// A copy of what a dictionary stands on, made under its lock; `EngineStorage` is the class of its storage.
template <class EngineStorage>
std::unique_ptr<EngineStorage> CopyStorage(MetadataDictionary& dictionary) {
    const ObjectGuard guard(dictionary);
    return CallEngine(
        [&] { return std::make_unique<EngineStorage>(static_cast<const EngineStorage&>(dictionary.get__Storage())); });
}

} // namespace Corvane::Rasterloom::Codecs
