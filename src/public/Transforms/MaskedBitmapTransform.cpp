#include <Corvane/Rasterloom/Transforms/MaskedBitmapTransform.h>

#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "Transforms/MaskBlender.h"
#include "transforms/Transform.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

MaskedBitmapTransform::MaskedBitmapTransform(BitmapChange change, std::unique_ptr<engine::Transform> transform)
    : BitmapTransform(change, std::move(transform)) {}

MaskedBitmapTransform::~MaskedBitmapTransform() { DisposeFinally(); }

void MaskedBitmapTransform::ApplyTransform(BitmapData& bitmapData) { Start(nullptr, &bitmapData, nullptr, nullptr, true); }

void MaskedBitmapTransform::ApplyMaskTransform(Bitmap& bitmap, Bitmap& mask) {
    ThrowIfEmpty(bitmap, "bitmap");
    ThrowIfEmpty(mask, "mask");
    Start(&bitmap, nullptr, nullptr, &mask, true);
}

void MaskedBitmapTransform::ApplyMaskTransform(BitmapData& bitmapData, Bitmap& mask) {
    ThrowIfEmpty(mask, "mask");
    Start(nullptr, &bitmapData, nullptr, &mask, true);
}

void MaskedBitmapTransform::ApplyMaskTransform(Bitmap& source, Bitmap& destination, Bitmap& mask) {
    ThrowIfEmpty(source, "source");
    ThrowIfEmpty(mask, "mask");
    Start(&source, nullptr, &destination, &mask, true);
}

void MaskedBitmapTransform::ApplyMaskTransform(BitmapData& sourceData, Bitmap& destination, Bitmap& mask) {
    ThrowIfEmpty(mask, "mask");
    Start(nullptr, &sourceData, &destination, &mask, true);
}

bool MaskedBitmapTransform::SetDestinationData(std::unique_ptr<engine::BitmapData>& destBitmapData) {
    Run& run = get__Run();
    if (BitmapTransform::SetDestinationData(destBitmapData) || !run.m_bApplyMasked) {
        return false;
    }
    engine::BitmapData& source = run.m_pSrcBitmapData->get__InternalBitmapData();
    CallEngine([&] {
        if (run.m_pMask == nullptr) {
            MaskBlender::ReplaceRows(*destBitmapData, source);
            return;
        }
        const engine::BitmapData& mask = run.m_pMask->get__InternalBitmapData();
        if (run.m_pDestBitmap == nullptr) {
            MaskBlender::Blend(*destBitmapData, mask, source);
            return;
        }
        // The source stays; the destination gets a copy of it with the result mixed in.
        auto copy = std::make_unique<engine::BitmapData>(source);
        MaskBlender::Blend(*destBitmapData, mask, *copy);
        run.m_pInternalBitmapDataToAttach = std::move(copy);
    });
    return true;
}

} // namespace Corvane::Rasterloom::Transforms
