// EXIF blocks for exif_interop.py: `table` prints the tables, `build` makes a block from nothing, `rewrite` reads a
// block, which begins with the TIFF header, and writes it again. What is written begins with "Exif".

#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Exif/ExifWords.h"
#include "metadata/Streams/MemoryReader.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

using namespace ImagingFramework;

namespace {

using Bytes = std::vector<std::uint8_t>;

void WriteFile(const char* pName, const Bytes& bytes) {
    std::ofstream(pName, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

Bytes ReadFile(const char* pName) {
    std::ifstream file(pName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void PrintTables() {
    for (std::uint32_t number = 0; number < ExifIfdCount; ++number) {
        const auto ifd = static_cast<ExifIfd>(number);
        for (const ExifTagInfo& info : GetExifTagTable(ifd)) {
            std::string name;
            ExifKey::KeyToName(ExifKey::MakeKey({info.Tag, ifd}), name);
            std::cout << "tag\t" << name << '\t' << number << '\t' << info.Tag << '\t'
                      << static_cast<std::uint32_t>(info.Type) << '\t' << info.Count << '\n';
        }
    }
    for (const ExifWord& word : GetExifWords()) {
        std::cout << "word\t" << static_cast<std::uint32_t>(word.Place.Ifd) << '\t' << word.Place.Tag << '\t'
                  << word.Value << '\t' << word.Text << '\n';
    }
}

/// Values of every type, set one by one.
ExifDataStorage Build(bool isLittleEndian) {
    ExifDataStorage exif;
    exif.SetLittleEndian(isLittleEndian);
    const auto text = [](const char* pText) { return DataItem(new std::string(pText)); };
    const auto rational = [](std::uint32_t a, std::uint32_t b) { return DataItem(UnsignedRational{a, b}); };
    exif.SetItem(0x010F, text("Maker é"));
    exif.SetItem(0x0112, DataItem(std::uint32_t{6}));
    exif.SetItem(0x011A, rational(300, 1));
    exif.SetItem(0x011B, rational(300, 1));
    exif.SetItem(0x0128, DataItem(std::uint32_t{2}));
    exif.SetItem(0x0132, text("2004:02:29 23:59:58"));
    exif.SetItem(0x0213, DataItem(std::uint32_t{1}));
    exif.SetItem(0x829A, rational(1, 125));
    exif.SetItemArray(0x8827, {DataItem(std::uint32_t{100}), DataItem(std::uint32_t{200})});
    exif.SetItem(0x9000, DataItem(new Bytes{'0', '2', '2', '0'}));
    exif.SetItem(0x9101, DataItem(new Bytes{1, 2, 3, 0}));
    exif.SetItem(0x9204, DataItem(Rational{-1, 3}));
    exif.SetItem(0xA000, DataItem(new Bytes{'0', '1', '0', '0'}));
    exif.SetItem(0xA001, DataItem(std::uint32_t{1}));
    exif.SetItem(0xA002, DataItem(std::uint32_t{16}));
    exif.SetItem(0xA003, DataItem(std::uint32_t{8}));
    exif.SetItem(1, text("R98"));
    exif.SetItem(0, DataItem(new Bytes{2, 2, 0, 0}));
    exif.SetItem(0xF0030001, text("N"));
    exif.SetItemArray(2, {rational(48, 1), rational(8, 1), rational(1234, 100)});
    exif.SetItem(0x1E, DataItem(std::uint32_t{1}));
    return exif;
}

int Run(int count, char** arguments) {
    const std::string command = count > 1 ? arguments[1] : "";
    if (command == "table") {
        PrintTables();
    } else if (command == "build" && count == 4) {
        WriteFile(arguments[2], Build(arguments[3] == std::string("II")).SerializeForJpeg());
    } else if (command == "rewrite" && count == 4) {
        const Bytes block = ReadFile(arguments[2]);
        MemoryReader reader(block.data(), block.size());
        ExifDataStorage exif;
        exif.Initialize(&reader, true);
        WriteFile(arguments[3], exif.SerializeForJpeg());
    } else {
        std::cerr << "table | build OUT II|MM | rewrite IN OUT\n";
        return 2;
    }
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return Run(count, arguments);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
