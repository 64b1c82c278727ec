#include "Throws.h"

#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Exceptions.h>

namespace Corvane::Rasterloom::Codecs {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(IptcDictionary, HoldsTextsAndBytes) {
    IptcDictionary iptc;
    iptc.Add(IptcDictionary::Keyword, std::vector<MetadataValue>{std::string("lake"), std::string("alps")});
    iptc.Add(IptcDictionary::City, std::string("Genève"));
    iptc.Add(0x2BB, Bytes{0, 1});
    EXPECT_EQ(iptc.get_Keys(), (std::vector<std::uint32_t>{0x219, 0x25A, 0x2BB}));
    EXPECT_EQ(iptc.GetItemString(IptcDictionary::Keyword), "lake; alps");
    EXPECT_EQ(iptc.GetKeyDescription(IptcDictionary::OriginalTransmissionReference), "Transmission reference");
    EXPECT_EQ(iptc.GetItemArray(IptcDictionary::Keyword).size(), 2U);
    EXPECT_TRUE(iptc.get_Item(0x2BB) == MetadataValue(Bytes{0, 1}));
    const auto copy = iptc.Clone();
    iptc.set_Item(IptcDictionary::City, std::string());
    EXPECT_FALSE(iptc.Contains(IptcDictionary::City));
    EXPECT_TRUE(copy->get_Item(IptcDictionary::City) == MetadataValue(std::string("Genève")));
    EXPECT_EQ(IptcDictionary(*copy).get_Count(), 3);
    EXPECT_THROW(iptc.set_Item(IptcDictionary::City, std::int32_t{1}), Host::InvalidCastException);
    EXPECT_THROW(iptc.set_Item(IptcDictionary::City, AdobeResourceBlock()), Host::InvalidCastException);
    EXPECT_THROW(iptc.set_Item(0x10000, std::string("x")), Host::ArgumentOutOfRangeException);
    iptc.Dispose();
    EXPECT_THROW(iptc.Clone(), Host::ObjectDisposedException);
}

TEST(AdobeResourceDictionary, HoldsBlocks) {
    AdobeResourceDictionary resources;
    AdobeResourceBlock block("näme", {1, 2, 3});
    resources.Add(0x3ED, block);
    block.set_Data({9});
    EXPECT_EQ(block.get_Size(), 1U);
    EXPECT_EQ(*block.get_Pointer(), 9);
    const auto stored = std::get<AdobeResourceBlock>(resources.get_Item(0x3ED));
    EXPECT_EQ(stored.get_Name(), "näme");
    EXPECT_EQ(stored.get_Data(), (Bytes{1, 2, 3}));
    const auto copy = resources.Clone();
    resources.set_Item(0x3ED, block);
    EXPECT_TRUE(copy->get_Item(0x3ED) == MetadataValue(stored));
    EXPECT_FALSE(resources.get_Item(0x3ED) == MetadataValue(stored));
    EXPECT_EQ(resources.get_Count(), 1);
    EXPECT_EQ(resources.GetItemString(0x3ED) + resources.GetKeyDescription(0x3ED), "");
    EXPECT_THROW(resources.set_Item(1, Bytes{1}), Host::InvalidCastException);
    EXPECT_THROW(resources.set_Item(0x10000, block), Host::ArgumentOutOfRangeException);
    const Bytes bytes = {4, 5};
    EXPECT_EQ(AdobeResourceBlock(bytes.data(), 2).get_Data(), bytes);
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { AdobeResourceBlock(nullptr, 2); }), "data");
    block.set_Name(std::string(300, 'x'));
    EXPECT_EQ(block.get_Name().size(), 255U);
}

} // namespace
} // namespace Corvane::Rasterloom::Codecs
