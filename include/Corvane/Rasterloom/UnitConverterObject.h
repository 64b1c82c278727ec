#pragma once

#include <Corvane/Rasterloom/LockableObject.h>
#include <Corvane/Rasterloom/UnitConverterBase.h>

namespace Corvane::Rasterloom {

extern template class RASTERLOOM_API UnitConverterBase<LockableObject>;

/// A lockable object with a current unit and resolutions, as a bitmap is one.
class RASTERLOOM_API UnitConverterObject : public UnitConverterBase<LockableObject> {
public:
    ~UnitConverterObject() override;

protected:
    UnitConverterObject();
};

} // namespace Corvane::Rasterloom
