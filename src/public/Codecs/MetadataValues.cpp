#include "MetadataValues.h"

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "metadata/AdobeResources/AdobeResourceBlock.h"

#include <Corvane/Rasterloom/Bitmap.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

OwnedItems::~OwnedItems() {
    for (engine::DataItem& item : m_items) {
        item.FreePointerValue();
    }
}

namespace {

/// Puts one kind of public value into an item.
struct ItemMaker {
    const char* Argument;

    engine::DataItem operator()(std::monostate) const { throw Host::ArgumentNullException(Argument); }
    engine::DataItem operator()(std::int32_t value) const { return engine::DataItem(value); }
    engine::DataItem operator()(std::int64_t value) const {
        return engine::DataItem(static_cast<std::uint32_t>(value));
    }
    engine::DataItem operator()(std::uint32_t value) const { return engine::DataItem(value); }
    engine::DataItem operator()(const Rational& value) const {
        return engine::DataItem(engine::Rational{value.get_Dividend(), value.get_Divider()});
    }
    engine::DataItem operator()(const UnsignedRational& value) const {
        return engine::DataItem(engine::UnsignedRational{value.get_Dividend(), value.get_Divider()});
    }
    engine::DataItem operator()(const std::string& value) const { return engine::DataItem(new std::string(value)); }
    engine::DataItem operator()(const std::vector<std::uint8_t>& value) const {
        return engine::DataItem(new std::vector<std::uint8_t>(value));
    }
    engine::DataItem operator()(const std::shared_ptr<Bitmap>& value) const {
        if (!value) {
            throw Host::ArgumentNullException(Argument);
        }
        const ObjectGuard guard(*value);
        return engine::DataItem(new engine::BitmapData(value->get__InternalBitmapData()));
    }
    engine::DataItem operator()(const AdobeResourceBlock& value) const {
        return engine::DataItem(new engine::AdobeResourceBlock(value.get__InternalBlock()));
    }
};

} // namespace

engine::DataItem ToDataItem(const MetadataValue& value, const char* argument) {
    return CallEngine([&] { return std::visit(ItemMaker{argument}, value); });
}

MetadataValue FromDataItem(engine::DataItem& item) {
    return CallEngine([&]() -> MetadataValue {
        switch (item.GetType()) {
        case engine::DataType::Int32:
            return static_cast<std::int32_t>(item);
        case engine::DataType::UInt32:
            return static_cast<std::uint32_t>(item);
        case engine::DataType::Rational: {
            const auto value = static_cast<engine::Rational>(item);
            return Rational(value.Dividend, value.Divider);
        }
        case engine::DataType::UnsignedRational: {
            const auto value = static_cast<engine::UnsignedRational>(item);
            return UnsignedRational(value.Dividend, value.Divider);
        }
        case engine::DataType::String:
            return static_cast<std::string&>(item);
        case engine::DataType::Bytes:
            return static_cast<std::vector<std::uint8_t>&>(item);
        case engine::DataType::BitmapData: {
            std::unique_ptr<engine::BitmapData> raster(static_cast<engine::BitmapData*>(item));
            item.Empty();
            return std::make_shared<Bitmap>(std::move(raster));
        }
        case engine::DataType::AdobeResources:
            return AdobeResourceBlock(static_cast<engine::AdobeResourceBlock*>(item));
        default:
            throw Host::ArgumentException("The type of pSrcValue is not supported by meta-data.", "pSrcValue");
        }
    });
}

} // namespace Corvane::Rasterloom::Codecs
