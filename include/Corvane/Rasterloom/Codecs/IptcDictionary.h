#pragma once

#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

namespace ImagingFramework {
class IptcDataStorage;
}

namespace Corvane::Rasterloom::Codecs {

/// The IPTC-IIM data sets of an image. A key is record * 256 + data set; the values of the keys named here are strings,
/// those of all others byte arrays. Strings and byte arrays can be set for every key; other types fail with
/// `Host::InvalidCastException`, keys above 0xFFFF with `Host::ArgumentOutOfRangeException`.
///
/// A key can have several values, as `Keyword` usually does; an empty value is dropped, so that setting one removes the
/// key. A value of more than 32767 bytes fails when the block is saved.
///
/// Texts are windows-1252, where other characters become "?", unless the data set 0x15A declares UTF-8 by the three
/// bytes of ESC % G. Setting or removing it converts the texts that are there.
class RASTERLOOM_API IptcDictionary final : public MetadataDictionary {
public:
    /// The key of the data set of that name, in record 2.
    static constexpr std::uint32_t ObjectName = 0x205;
    static constexpr std::uint32_t Urgency = 0x20A;
    static constexpr std::uint32_t Category = 0x20F;
    static constexpr std::uint32_t SupplementaryCategory = 0x214;
    static constexpr std::uint32_t Keyword = 0x219;
    static constexpr std::uint32_t SpecialInstructions = 0x228;
    static constexpr std::uint32_t DateCreated = 0x237;
    static constexpr std::uint32_t Byline = 0x250;
    static constexpr std::uint32_t BylineTitle = 0x255;
    static constexpr std::uint32_t City = 0x25A;
    static constexpr std::uint32_t State = 0x25F;
    static constexpr std::uint32_t Country = 0x265;
    static constexpr std::uint32_t OriginalTransmissionReference = 0x267;
    static constexpr std::uint32_t Headline = 0x269;
    static constexpr std::uint32_t Credit = 0x26E;
    static constexpr std::uint32_t Source = 0x273;
    static constexpr std::uint32_t CopyrightNotice = 0x274;
    static constexpr std::uint32_t Caption = 0x278;
    static constexpr std::uint32_t Writer = 0x27A;

    /// Without entries.
    IptcDictionary();
    /// A copy of the other's contents.
    explicit IptcDictionary(IptcDictionary& other);
    /// Internal: takes over the engine's object; null fails with `Host::ArgumentNullException` ("metaData").
    explicit IptcDictionary(std::unique_ptr<ImagingFramework::IptcDataStorage> data);
    ~IptcDictionary() override;

    /// A copy of the contents.
    std::unique_ptr<IptcDictionary> Clone();

    /// Internal: the engine's object, without the lock.
    ImagingFramework::IptcDataStorage& get__InternalData() const;
};

} // namespace Corvane::Rasterloom::Codecs
