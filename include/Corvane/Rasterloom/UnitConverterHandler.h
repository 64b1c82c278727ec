#pragma once

#include <Corvane/Rasterloom/SyncHandler.h>
#include <Corvane/Rasterloom/UnitConverterBase.h>

namespace Corvane::Rasterloom {

extern template class RASTERLOOM_API UnitConverterBase<SyncHandler>;

/// An operation with a current unit and resolutions, as a transform is one.
class RASTERLOOM_API UnitConverterHandler : public UnitConverterBase<SyncHandler> {
public:
    ~UnitConverterHandler() override;

protected:
    UnitConverterHandler();
};

} // namespace Corvane::Rasterloom
