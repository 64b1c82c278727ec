// Lists the metadata of a JPEG file, or writes a file with some of them changed. Shows the dictionaries of EXIF and IPTC, the
// tree of XMP, and how a reader's metadata goes into a writer.
//
// Usage: metadata_editor FILE
//        metadata_editor FILE OUT.jpg KIND:NAME=VALUE...      an empty value removes the entry
// Names: exif:artist exif:copyright exif:description exif:software  iptc:caption iptc:headline iptc:keyword iptc:byline
//        xmp:PREFIX:PROPERTY for any simple property, such as xmp:xmp:Rating or xmp:photoshop:City
//
// The picture is decoded and encoded again, at a quality where that does not show.
#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/Codecs/AdobeResourceDictionary.h>
#include <Corvane/Rasterloom/Codecs/ExifDictionary.h>
#include <Corvane/Rasterloom/Codecs/IptcDictionary.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/JpegReader.h>
#include <Corvane/Rasterloom/Codecs/XmpData.h>
#include <Corvane/Rasterloom/Codecs/XmpNamespace.h>
#include <Corvane/Rasterloom/Codecs/XmpValueNode.h>

#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

using namespace Corvane::Rasterloom;
using namespace Corvane::Rasterloom::Codecs;

namespace {

/// The blocks of a file; those that it does not have are empty ones here.
struct Metadata {
    explicit Metadata(JpegReader& reader)
        : Exif(reader.get_Exif()), Iptc(reader.get_Iptc()), Xmp(reader.get_Xmp()) {
        if (!Exif) {
            Exif = std::make_shared<ExifDictionary>();
        }
        if (!Iptc) {
            Iptc = std::make_shared<IptcDictionary>();
        }
    }

    std::shared_ptr<ExifDictionary> Exif;
    std::shared_ptr<IptcDictionary> Iptc;
    XmpData Xmp;
};

/// The image resources beside IPTC, which is one of them in the file.
std::shared_ptr<AdobeResourceDictionary> OtherResources(JpegReader& reader) {
    constexpr std::uint32_t iptc = 0x0404;
    const auto resources = reader.get_AdobeResources();
    if (resources != nullptr && resources->Contains(iptc)) {
        resources->Remove(iptc);
    }
    return resources;
}

// --- Listing

void ListDictionary(const char* kind, MetadataDictionary& dictionary) {
    for (const std::uint32_t key : dictionary.get_Keys()) {
        // The library knows the names and puts the values into words: "Exposure time", "1/250 sec".
        std::cout << kind << "  " << dictionary.GetKeyDescription(key) << ": " << dictionary.GetItemString(key) << '\n';
    }
}

void ListNode(XmpNode& node, std::size_t depth) {
    std::cout << "XMP   " << std::string(2 * depth, ' ') << node.get_Name();
    if (auto* const value = dynamic_cast<XmpValueNode*>(&node)) {
        std::cout << ": " << value->get_Value();
    }
    std::cout << '\n';
    for (auto children = node.GetEnumerator(); children.MoveNext();) {
        ListNode(*children.get_Current(), depth + 1);
    }
}

void List(Metadata& metadata) {
    ListDictionary("EXIF", *metadata.Exif);
    ListDictionary("IPTC", *metadata.Iptc);
    for (const auto& node : metadata.Xmp.get_Values()) {
        ListNode(*node, 0);
    }
}

// --- Changing

void SetEntry(MetadataDictionary& dictionary, std::uint32_t key, const std::string& value) {
    if (!value.empty()) {
        dictionary.set_Item(key, value);
    } else if (dictionary.Contains(key)) {
        dictionary.Remove(key);
    }
}

void SetProperty(XmpData& xmp, const std::string& name, const std::string& value) {
    if (XmpNamespace::GetNamespaceByPrefix(name.substr(0, name.find(':'))) == nullptr) {
        throw std::invalid_argument(name + ": nobody knows the prefix; XmpNamespace::AddNamespace would tell");
    }
    if (value.empty()) {
        xmp.Remove(name);
    } else {
        xmp.SetNode(std::make_shared<XmpValueNode>(XmpNodeType::SimpleProperty, value, name));
    }
}

/// One change, as "exif:artist=Somebody".
void Change(Metadata& metadata, const std::string& change) {
    static const std::map<std::string, std::uint32_t> exifKeys = {{"artist", ExifDictionary::Artist},
                                                                  {"copyright", ExifDictionary::Copyright},
                                                                  {"description", ExifDictionary::ImageDescription},
                                                                  {"software", ExifDictionary::Software}};
    static const std::map<std::string, std::uint32_t> iptcKeys = {{"caption", IptcDictionary::Caption},
                                                                  {"headline", IptcDictionary::Headline},
                                                                  {"keyword", IptcDictionary::Keyword},
                                                                  {"byline", IptcDictionary::Byline}};
    const std::size_t colon = change.find(':');
    const std::size_t equals = change.find('=');
    if (colon == std::string::npos || equals == std::string::npos || colon > equals) {
        throw std::invalid_argument(change + ": not of the form KIND:NAME=VALUE");
    }
    const std::string kind = change.substr(0, colon);
    const std::string name = change.substr(colon + 1, equals - colon - 1);
    const std::string value = change.substr(equals + 1);
    if (kind == "exif" && exifKeys.contains(name)) {
        SetEntry(*metadata.Exif, exifKeys.at(name), value);
    } else if (kind == "iptc" && iptcKeys.contains(name)) {
        SetEntry(*metadata.Iptc, iptcKeys.at(name), value);
    } else if (kind == "xmp") {
        SetProperty(metadata.Xmp, name, value);
    } else {
        throw std::invalid_argument(change + ": there is no such entry");
    }
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 2 || argc == 3) {
        std::cerr << "usage: metadata_editor FILE [OUT.jpg KIND:NAME=VALUE...]\n";
        return 2;
    }
    JpegReader reader{std::filesystem::path(argv[1])};
    Metadata metadata(reader);
    if (argc == 2) {
        List(metadata);
        return 0;
    }
    for (int i = 3; i < argc; ++i) {
        Change(metadata, argv[i]);
    }
    Bitmap bitmap;
    reader.LoadFrame(0)->GetBitmap(&bitmap);
    // Nothing goes over by itself: what is not set here is not in the new file.
    JpegEncoderOptions options(95);
    options.set_Exif(metadata.Exif);
    options.set_Iptc(metadata.Iptc);
    options.set_Xmp(metadata.Xmp.get_Count() > 0 ? metadata.Xmp.Save() : std::string());
    options.set_AdobeResources(OtherResources(reader));
    bitmap.Save(argv[2], &options);
    return 0;
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
