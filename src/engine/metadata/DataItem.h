#pragma once

#include "Common/BitmapData.h"
#include "metadata/FileFormat.h"
#include "metadata/MetaDataTypes.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ImagingFramework {

/// What a `DataItem` holds.
enum class DataType : std::uint32_t {
    Empty = 0,
    Int32 = 1,
    UInt32 = 2,
    PixelFormat = 3,
    MediaFormat = 4,
    FrameCompressionType = 9,
    FrameDisposalMethod = 10,
    Rational = 11,
    UnsignedRational = 12,
    Jpeg2kProgressionOrder = 17,
    Float = 18,
    Double = 19,
    Memory = 0x10000000, ///< a block of `AllocMemory`
    BitmapData = 0x10000005,
    ColorMap = 0x10000006,
    ColorProfile = 0x10000007,
    String = 0x1000000D, ///< UTF-8
    Bytes = 0x1000000E,
    ExifDataStorage = 0x1000000F,
    IptcDataStorage = 0x10000010,
    AdobeResources = 0x10000018,
    TiffExtraChannels = 0x10000019,
};

/// Base of the larger objects that travel in a `DataItem`. Each class has a static member `ItemType`, the code it
/// travels under; classes that share a code are told apart by their type.
class IDataItemObject {
public:
    virtual ~IDataItemObject() = default;
};

template <class T>
concept DataItemObject = std::derived_from<T, IDataItemObject> && requires {
    { T::ItemType } -> std::convertible_to<DataType>;
};

/// The bytes of an ICC profile as an item of their own.
class ColorProfileData : public IDataItemObject {
public:
    static constexpr DataType ItemType = DataType::ColorProfile;
    explicit ColorProfileData(std::vector<std::uint8_t> bytes) : Bytes(std::move(bytes)) {}
    std::vector<std::uint8_t> Bytes;
};

/// The raster of each extra channel and what it holds; the rasters are not owned by the list.
using TiffExtraChannelList = std::vector<std::pair<BitmapData*, TiffChannelType>>;

/// A small value with its type. It owns nothing: whoever receives a pointer value from `GetItem` owns it, and frees it
/// with `FreePointerValue` or takes it over.
///
/// Reading fails with `NotInitializedException` when the item is empty and with `InvalidTypeCastException` when the
/// type does not fit. All integer kinds (`Int32`, `UInt32`, `PixelFormat`, `MediaFormat`, `FrameCompressionType`,
/// `Jpeg2kProgressionOrder`) read as signed and unsigned integers with their low 32 bits unchanged, and as floating
/// point with these bits taken as unsigned. A rational with divider 0 reads as its dividend. A reference to a null
/// pointer fails with `NotInitializedException`.
class DataItem {
public:
    DataItem() noexcept = default;
    template <class T>
    requires(!std::derived_from<std::remove_cvref_t<T>, DataItem>) explicit DataItem(T&& value) {
        *this = std::forward<T>(value);
    }
    DataItem(const DataItem&) = default;
    DataItem& operator=(const DataItem&) = default;
    virtual ~DataItem() = default;

    DataType GetType() const noexcept { return m_type; }
    bool IsEmpty() const noexcept { return m_type == DataType::Empty; }
    /// Forgets the value; a pointer value is not freed.
    void Empty() noexcept {
        m_type = DataType::Empty;
        m_value = {};
    }
    /// Frees what a pointer value points to, by its type, and empties the item. Other values stay.
    void FreePointerValue() noexcept;

    DataItem& operator=(std::int32_t value) noexcept;
    DataItem& operator=(std::uint32_t value) noexcept;
    DataItem& operator=(PixelFormat value) noexcept;
    DataItem& operator=(FileFormat value) noexcept;
    DataItem& operator=(FrameCompressionType value) noexcept;
    DataItem& operator=(FrameDisposalMethod value) noexcept;
    DataItem& operator=(Rational value) noexcept;
    DataItem& operator=(UnsignedRational value) noexcept;
    DataItem& operator=(Jpeg2kProgressionOrder value) noexcept;
    DataItem& operator=(float value) noexcept;
    DataItem& operator=(double value) noexcept;
    DataItem& operator=(BitmapData* pValue) noexcept;
    DataItem& operator=(ColorMap* pValue) noexcept;
    DataItem& operator=(std::string* pValue) noexcept;
    DataItem& operator=(std::vector<std::uint8_t>* pValue) noexcept;
    DataItem& operator=(TiffExtraChannelList* pValue) noexcept;
    template <DataItemObject T>
    DataItem& operator=(T* pValue) noexcept {
        m_value.Object = pValue;
        m_type = T::ItemType;
        return *this;
    }
    /// A block of `AllocMemory`.
    void SetMemory(void* pMemory) noexcept;

    explicit operator std::int32_t() const;
    explicit operator std::uint32_t() const;
    explicit operator float() const;
    explicit operator double() const;
    explicit operator PixelFormat() const;
    explicit operator FileFormat() const;
    explicit operator FrameCompressionType() const;
    explicit operator FrameDisposalMethod() const;
    explicit operator Rational() const;
    explicit operator UnsignedRational() const;
    explicit operator Jpeg2kProgressionOrder() const;
    explicit operator BitmapData*() const;
    explicit operator BitmapData&() const;
    explicit operator ColorMap*() const;
    explicit operator std::string*() const;
    explicit operator std::string&() const;
    explicit operator std::vector<std::uint8_t>*() const;
    explicit operator std::vector<std::uint8_t>&() const;
    explicit operator TiffExtraChannelList*() const;
    template <DataItemObject T>
    explicit operator T*() const {
        RequireType(T::ItemType);
        T* const pObject = dynamic_cast<T*>(m_value.Object);
        if (pObject == nullptr && m_value.Object != nullptr) {
            throw InvalidTypeCastException("DataItem");
        }
        return pObject;
    }
    template <DataItemObject T>
    explicit operator T&() const {
        return Dereference(static_cast<T*>(*this));
    }

private:
    union Value {
        std::uint64_t Bits = 0;
        Rational Signed;
        UnsignedRational Unsigned;
        float Single;
        double Real;
        void* Memory;
        BitmapData* Bitmap;
        ColorMap* Map;
        std::string* Text;
        std::vector<std::uint8_t>* Bytes;
        TiffExtraChannelList* Channels;
        IDataItemObject* Object;
    };

    void RequireFilled() const;
    void RequireType(DataType type) const;
    bool IsIntegerKind() const noexcept;
    std::uint32_t IntegerBits() const;
    DataItem& SetInteger(std::uint64_t bits, DataType type) noexcept;
    template <class T>
    static T& Dereference(T* pValue) {
        if (pValue == nullptr) {
            throw NotInitializedException("DataItem");
        }
        return *pValue;
    }

    Value m_value;
    DataType m_type = DataType::Empty;
};

} // namespace ImagingFramework
