// The code of ../metadata.md.
#include "Guide.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/FormatManager.h>
#include <Corvane/Rasterloom/Codecs/IFormatReader.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Codecs/IMetadataReadSupport.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/XmpData.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextItemNode.h>
#include <Corvane/Rasterloom/Codecs/XmpLocalizedTextNode.h>
#include <Corvane/Rasterloom/Codecs/XmpTagNames.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>

#include <variant>

using namespace Corvane::Rasterloom;
using namespace Corvane::Rasterloom::Codecs;

namespace {

void Write() {
    // [write]
    const auto exif = std::make_shared<ExifDictionary>();
    exif->set_Item(ExifDictionary::Artist, std::string("Lake Works"));
    exif->set_Item(ExifDictionary::ExposureTime, UnsignedRational(1, 125));

    const auto iptc = std::make_shared<IptcDictionary>();
    iptc->set_Item(IptcDictionary::Headline, std::string("The lake in the evening"));
    iptc->SetItemArray(IptcDictionary::Keyword, {std::string("lake"), std::string("evening")});

    XmpData xmp;
    xmp.AddNode(std::make_shared<XmpValueNode>(XmpNodeType::SimpleProperty, "5", XmpTagNames::XmpRating));
    const auto title = std::make_shared<XmpLocalizedTextNode>(XmpTagNames::DCTitle);
    title->AddNode(std::make_shared<XmpLocalizedTextItemNode>("x-default", "The lake"));
    xmp.AddNode(title);

    JpegEncoderOptions options;
    options.set_Exif(exif);
    options.set_Iptc(iptc);
    options.set_Xmp(xmp.Save());
    Bitmap("lake.bmp").Save("tagged.jpg", &options);
    // [write end]
}

void Read() {
    // [read]
    const auto reader = FormatManager::CreateFormatReader("tagged.jpg");
    auto* const support = dynamic_cast<IMetadataReadSupport*>(reader.get()); // null for a format without metadata
    // [read end]
    Expect(support != nullptr);
    std::string artist;
    // [values]
    if (const auto exif = support->get_Exif(); exif && exif->Contains(ExifDictionary::Artist)) {
        artist = std::get<std::string>(exif->get_Item(ExifDictionary::Artist));
        exif->GetItemString(ExifDictionary::ExposureTime); // the value as a text for people
    }
    std::vector<std::string> keywords;
    if (const auto iptc = support->get_Iptc()) {
        for (const MetadataValue& value : iptc->GetItemArray(IptcDictionary::Keyword)) {
            keywords.push_back(std::get<std::string>(value));
        }
    }
    XmpData xmp(support->get_Xmp());
    if (const auto rating = std::dynamic_pointer_cast<XmpValueNode>(xmp.get_Item(XmpTagNames::XmpRating))) {
        rating->get_Value(); // "5"
    }
    // [values end]
    Expect(artist == "Lake Works" && keywords.size() == 2 && keywords[1] == "evening");
    Expect(xmp.Contains(XmpTagNames::DCTitle));
}

void Keep() {
    // [keep]
    const auto reader = FormatManager::CreateFormatReader("tagged.jpg");
    Bitmap picture;
    reader->LoadFrame(0)->GetBitmap(&picture);
    JpegEncoderOptions options(90);
    if (auto* support = dynamic_cast<IMetadataReadSupport*>(reader.get())) {
        const auto exif = support->get_Exif();
        if (exif) {
            exif->set_Item(ExifDictionary::Software, std::string("My editor"));
        }
        options.set_Exif(exif);
        options.set_Iptc(support->get_Iptc());
        options.set_Xmp(support->get_Xmp());
        options.set_AdobeResources(support->get_AdobeResources());
    }
    reader->Close();
    picture.Save("tagged.jpg", &options);
    // [keep end]
    const auto again = FormatManager::CreateFormatReader("tagged.jpg");
    const auto exif = dynamic_cast<IMetadataReadSupport&>(*again).get_Exif();
    Expect(std::get<std::string>(exif->get_Item(ExifDictionary::Software)) == "My editor");
    Expect(std::get<std::string>(exif->get_Item(ExifDictionary::Artist)) == "Lake Works");
}

} // namespace

int main() { return RunPage({Write, Read, Keep}); }
