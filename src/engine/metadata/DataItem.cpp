#include "metadata/DataItem.h"

#include "MemoryManagement/Memory.h"

namespace ImagingFramework {

void DataItem::FreePointerValue() noexcept {
    switch (m_type) {
    case DataType::Memory:
        FreeMemory(m_value.Memory);
        break;
    case DataType::BitmapData:
        delete m_value.Bitmap;
        break;
    case DataType::ColorMap:
        delete m_value.Map;
        break;
    case DataType::String:
        delete m_value.Text;
        break;
    case DataType::Bytes:
        delete m_value.Bytes;
        break;
    case DataType::TiffExtraChannels:
        delete m_value.Channels;
        break;
    case DataType::ColorProfile:
    case DataType::ExifDataStorage:
    case DataType::IptcDataStorage:
    case DataType::AdobeResources:
        delete m_value.Object;
        break;
    default:
        return;
    }
    Empty();
}

// --- Checks

void DataItem::RequireFilled() const {
    if (IsEmpty()) {
        throw NotInitializedException("DataItem");
    }
}

void DataItem::RequireType(DataType type) const {
    RequireFilled();
    if (m_type != type) {
        throw InvalidTypeCastException("DataItem");
    }
}

bool DataItem::IsIntegerKind() const noexcept {
    switch (m_type) {
    case DataType::Int32:
    case DataType::UInt32:
    case DataType::PixelFormat:
    case DataType::MediaFormat:
    case DataType::FrameCompressionType:
    case DataType::Jpeg2kProgressionOrder:
        return true;
    default:
        return false;
    }
}

std::uint32_t DataItem::IntegerBits() const {
    RequireFilled();
    if (!IsIntegerKind()) {
        throw InvalidTypeCastException("DataItem");
    }
    return static_cast<std::uint32_t>(m_value.Bits);
}

// --- Assignment

DataItem& DataItem::SetInteger(std::uint64_t bits, DataType type) noexcept {
    m_value.Bits = bits;
    m_type = type;
    return *this;
}

DataItem& DataItem::operator=(std::int32_t value) noexcept {
    return SetInteger(static_cast<std::uint32_t>(value), DataType::Int32);
}

DataItem& DataItem::operator=(std::uint32_t value) noexcept {
    return SetInteger(value, DataType::UInt32);
}

DataItem& DataItem::operator=(PixelFormat value) noexcept {
    return SetInteger(ToWord(value), DataType::PixelFormat);
}

DataItem& DataItem::operator=(FileFormat value) noexcept {
    return SetInteger(static_cast<std::uint64_t>(value), DataType::MediaFormat);
}

DataItem& DataItem::operator=(FrameCompressionType value) noexcept {
    return SetInteger(static_cast<std::uint32_t>(value), DataType::FrameCompressionType);
}

DataItem& DataItem::operator=(FrameDisposalMethod value) noexcept {
    return SetInteger(static_cast<std::uint32_t>(value), DataType::FrameDisposalMethod);
}

DataItem& DataItem::operator=(Jpeg2kProgressionOrder value) noexcept {
    return SetInteger(static_cast<std::uint32_t>(value), DataType::Jpeg2kProgressionOrder);
}

DataItem& DataItem::operator=(Rational value) noexcept {
    m_value.Signed = value;
    m_type = DataType::Rational;
    return *this;
}

DataItem& DataItem::operator=(UnsignedRational value) noexcept {
    m_value.Unsigned = value;
    m_type = DataType::UnsignedRational;
    return *this;
}

DataItem& DataItem::operator=(float value) noexcept {
    m_value.Single = value;
    m_type = DataType::Float;
    return *this;
}

DataItem& DataItem::operator=(double value) noexcept {
    m_value.Real = value;
    m_type = DataType::Double;
    return *this;
}

DataItem& DataItem::operator=(BitmapData* pValue) noexcept {
    m_value.Bitmap = pValue;
    m_type = DataType::BitmapData;
    return *this;
}

DataItem& DataItem::operator=(ColorMap* pValue) noexcept {
    m_value.Map = pValue;
    m_type = DataType::ColorMap;
    return *this;
}

DataItem& DataItem::operator=(std::string* pValue) noexcept {
    m_value.Text = pValue;
    m_type = DataType::String;
    return *this;
}

DataItem& DataItem::operator=(std::vector<std::uint8_t>* pValue) noexcept {
    m_value.Bytes = pValue;
    m_type = DataType::Bytes;
    return *this;
}

DataItem& DataItem::operator=(TiffExtraChannelList* pValue) noexcept {
    m_value.Channels = pValue;
    m_type = DataType::TiffExtraChannels;
    return *this;
}

void DataItem::SetMemory(void* pMemory) noexcept {
    m_value.Memory = pMemory;
    m_type = DataType::Memory;
}

// --- Reading

DataItem::operator std::int32_t() const {
    return static_cast<std::int32_t>(IntegerBits());
}

DataItem::operator std::uint32_t() const {
    return IntegerBits();
}

DataItem::operator float() const {
    switch (m_type) {
    case DataType::Float:
        return m_value.Single;
    case DataType::Double:
        return static_cast<float>(m_value.Real);
    default:
        return static_cast<float>(IntegerBits());
    }
}

DataItem::operator double() const {
    switch (m_type) {
    case DataType::Float:
        return m_value.Single;
    case DataType::Double:
        return m_value.Real;
    case DataType::Rational: {
        const Rational value = m_value.Signed;
        return value.Divider == 0 ? value.Dividend : static_cast<double>(value.Dividend) / value.Divider;
    }
    case DataType::UnsignedRational: {
        const UnsignedRational value = m_value.Unsigned;
        return value.Divider == 0 ? value.Dividend : static_cast<double>(value.Dividend) / value.Divider;
    }
    default:
        return IntegerBits();
    }
}

DataItem::operator PixelFormat() const {
    RequireType(DataType::PixelFormat);
    return static_cast<PixelFormat>(IntegerBits());
}

DataItem::operator FileFormat() const {
    RequireType(DataType::MediaFormat);
    return static_cast<FileFormat>(m_value.Bits);
}

DataItem::operator FrameCompressionType() const {
    RequireType(DataType::FrameCompressionType);
    return static_cast<FrameCompressionType>(IntegerBits());
}

DataItem::operator FrameDisposalMethod() const {
    RequireType(DataType::FrameDisposalMethod);
    return static_cast<FrameDisposalMethod>(m_value.Bits);
}

DataItem::operator Rational() const {
    RequireType(DataType::Rational);
    return m_value.Signed;
}

DataItem::operator UnsignedRational() const {
    RequireType(DataType::UnsignedRational);
    return m_value.Unsigned;
}

DataItem::operator Jpeg2kProgressionOrder() const {
    RequireType(DataType::Jpeg2kProgressionOrder);
    return static_cast<Jpeg2kProgressionOrder>(IntegerBits());
}

DataItem::operator BitmapData*() const {
    RequireType(DataType::BitmapData);
    return m_value.Bitmap;
}

DataItem::operator BitmapData&() const {
    return Dereference(static_cast<BitmapData*>(*this));
}

DataItem::operator ColorMap*() const {
    RequireType(DataType::ColorMap);
    return m_value.Map;
}

DataItem::operator std::string*() const {
    RequireType(DataType::String);
    return m_value.Text;
}

DataItem::operator std::string&() const {
    return Dereference(static_cast<std::string*>(*this));
}

DataItem::operator std::vector<std::uint8_t>*() const {
    RequireType(DataType::Bytes);
    return m_value.Bytes;
}

DataItem::operator std::vector<std::uint8_t>&() const {
    return Dereference(static_cast<std::vector<std::uint8_t>*>(*this));
}

DataItem::operator TiffExtraChannelList*() const {
    RequireType(DataType::TiffExtraChannels);
    return m_value.Channels;
}

} // namespace ImagingFramework
