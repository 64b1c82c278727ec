#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

/// Puts EXIF blocks together byte by byte, from the TIFF header on, in the order in which its members are called.
class ExifBuilder {
public:
    using Bytes = std::vector<std::uint8_t>;

    struct Field {
        std::uint16_t Tag;
        std::uint16_t Type;
        std::uint32_t Count;
        Bytes Value; ///< in the order of the block
    };

    explicit ExifBuilder(bool little) : m_little(little) {
        const std::uint8_t mark = little ? 'I' : 'M';
        m_bytes = {mark, mark};
        Append(Number(42, 2));
        Append(Number(8, 4));
    }

    Bytes Number(std::uint32_t value, std::size_t size) const {
        Bytes bytes(size);
        for (std::size_t i = 0; i < size; ++i) {
            bytes[m_little ? i : size - 1 - i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
        return bytes;
    }
    Field Numbers(std::uint16_t tag, std::uint16_t type, std::size_t size, std::size_t perValue,
                  std::initializer_list<std::uint32_t> values) const {
        Field field{tag, type, static_cast<std::uint32_t>(values.size() / perValue), {}};
        for (const std::uint32_t value : values) {
            const Bytes bytes = Number(value, size);
            field.Value.insert(field.Value.end(), bytes.begin(), bytes.end());
        }
        return field;
    }
    Field Short(std::uint16_t tag, std::initializer_list<std::uint32_t> values) const {
        return Numbers(tag, 3, 2, 1, values);
    }
    Field Long(std::uint16_t tag, std::initializer_list<std::uint32_t> values) const {
        return Numbers(tag, 4, 4, 1, values);
    }
    Field Rational(std::uint16_t tag, std::initializer_list<std::uint32_t> values) const {
        return Numbers(tag, 5, 4, 2, values);
    }
    Field SignedRational(std::uint16_t tag, std::initializer_list<std::uint32_t> values) const {
        return Numbers(tag, 10, 4, 2, values);
    }
    static Field Raw(std::uint16_t tag, std::uint16_t type, Bytes value) {
        const auto count = static_cast<std::uint32_t>(value.size());
        return {tag, type, count, std::move(value)};
    }
    /// With a NUL at its end.
    static Field Ascii(std::uint16_t tag, std::string_view text) {
        Bytes bytes(text.begin(), text.end());
        bytes.push_back(0);
        return Raw(tag, 2, std::move(bytes));
    }
    static Field Undefined(std::uint16_t tag, std::string_view text) {
        return Raw(tag, 7, Bytes(text.begin(), text.end()));
    }

    std::uint32_t Size() const { return static_cast<std::uint32_t>(m_bytes.size()); }
    /// Returns where they stand.
    std::uint32_t Append(const Bytes& bytes) {
        const std::uint32_t place = Size();
        m_bytes.resize(m_bytes.size() + bytes.size());
        std::copy(bytes.begin(), bytes.end(), m_bytes.begin() + place);
        return place;
    }
    void FillTo(std::uint32_t size) { m_bytes.resize(size); }
    /// A directory with its larger values behind it, on even offsets. Returns its place.
    std::uint32_t Directory(const std::vector<Field>& fields) {
        const std::uint32_t place = Size();
        auto values = static_cast<std::uint32_t>(place + 2 + fields.size() * 12 + 4);
        Bytes large;
        Append(Number(static_cast<std::uint32_t>(fields.size()), 2));
        for (const Field& field : fields) {
            Append(Number(field.Tag, 2));
            Append(Number(field.Type, 2));
            Append(Number(field.Count, 4));
            if (field.Value.size() <= 4) {
                Append(field.Value);
                FillTo(Size() + static_cast<std::uint32_t>(4 - field.Value.size()));
            } else {
                Append(Number(values + static_cast<std::uint32_t>(large.size()), 4));
                large.insert(large.end(), field.Value.begin(), field.Value.end());
                large.resize(large.size() + large.size() % 2);
            }
        }
        Append(Number(0, 4));
        Append(large);
        return place;
    }
    void Set(std::uint32_t place, std::uint32_t value, std::size_t size = 4) {
        std::ranges::copy(Number(value, size), m_bytes.begin() + place);
    }
    void SetFirst(std::uint32_t directory) { Set(4, directory); }
    /// The value or offset in the field at a position of a directory.
    void SetField(std::uint32_t directory, std::uint32_t index, std::uint32_t value) {
        Set(directory + 2 + index * 12 + 8, value);
    }
    void SetNext(std::uint32_t directory, std::uint32_t fieldCount, std::uint32_t next) {
        Set(directory + 2 + fieldCount * 12, next);
    }
    const Bytes& Get() const { return m_bytes; }

private:
    bool m_little;
    Bytes m_bytes;
};

/// What a camera writes: all five directories, unknown tags in each, and a maker note that stands where the library
/// leaves it. Everything is in the order in which the library writes.
struct CameraBlock {
    static constexpr std::uint32_t MakerNotePlace = 200;

    ExifBuilder::Bytes MakerNote;
    ExifBuilder::Bytes Thumbnail;
    ExifBuilder::Bytes Block;

    explicit CameraBlock(bool little, bool hasMakerNote = true, std::size_t noteSize = 301,
                         std::size_t thumbnailSize = 2000);
};

inline CameraBlock::CameraBlock(bool little, bool hasMakerNote, std::size_t noteSize, std::size_t thumbnailSize)
    : MakerNote(noteSize), Thumbnail(thumbnailSize) {
    for (std::size_t i = 0; i < MakerNote.size(); ++i) {
        MakerNote[i] = static_cast<std::uint8_t>(i * 7 + 1);
    }
    Thumbnail[0] = 0xFF;
    Thumbnail[1] = 0xD8;
    ExifBuilder b(little);
    using Fields = std::vector<ExifBuilder::Field>;
    if (hasMakerNote) {
        b.FillTo(MakerNotePlace);
        b.Append(MakerNote);
        b.FillTo(b.Size() + b.Size() % 2);
    }
    // clang-format off
    const Fields image = {
        b.Ascii(0x010F, "Maker & Sons"), b.Ascii(0x0110, "X-1"), b.Short(0x0112, {6}), b.Rational(0x011A, {300, 1}),
        b.Rational(0x011B, {300, 1}), b.Short(0x0128, {2}), b.Ascii(0x0131, "1.02"),
        b.Ascii(0x0132, "2004:02:29 23:59:58"), b.Short(0x0213, {2}), b.Long(0x8769, {0}), b.Long(0x8825, {0}),
        b.Undefined(0xC4A5, std::string_view("PrintIM\0000250\0\0\1\0\2\0\1\0\0\0", 22)),
        b.Numbers(0xEA1C, 9, 4, 1, {0xFFFFFFFE, 7})};
    Fields exif = {
        b.Rational(0x829A, {1, 125}), b.Rational(0x829D, {28, 10}), b.Short(0x8822, {2}), b.Short(0x8827, {100, 200}),
        b.Undefined(0x9000, "0220"), b.Ascii(0x9003, "2004:02:29 23:59:58"), b.Ascii(0x9004, "2004:02:29 23:59:58"),
        b.Undefined(0x9101, std::string_view("\1\2\3\0", 4)), b.SignedRational(0x9201, {6965784, 1000000}),
        b.SignedRational(0x9204, {0xFFFFFFFF, 3}), b.Short(0x9209, {0x59}),
        b.Undefined(0x9286, std::string_view("ASCII\0\0\0made by hand", 20)), b.Undefined(0xA000, "0100"),
        b.Short(0xA001, {1}), b.Long(0xA002, {3072}), b.Short(0xA003, {2048}), b.Long(0xA005, {0}),
        b.Undefined(0xA300, "\3"), b.Rational(0xA432, {24, 1, 70, 1, 28, 10, 4, 1}), b.Ascii(0xFDE8, "unknown")};
    const Fields gps = {
        b.Raw(0, 1, {2, 2, 0, 0}), b.Ascii(1, "N"), b.Rational(2, {48, 1, 8, 1, 1234, 100}), b.Ascii(3, "E"),
        b.Rational(4, {11, 1, 34, 1, 5678, 100}), b.Raw(5, 1, {0}), b.Rational(7, {10, 1, 20, 1, 305, 10}),
        b.Ascii(0x1D, "2004:02:29"), b.Rational(0x1F, {5, 1})};
    const Fields interoperability = {b.Ascii(1, "R98"), b.Undefined(2, "0100"), b.Short(0x1001, {3072})};
    const Fields thumbnail = {
        b.Short(0x0103, {6}), b.Rational(0x011A, {720000, 10000}), b.Rational(0x011B, {720000, 10000}),
        b.Short(0x0128, {2}), b.Long(0x0201, {0}), b.Long(0x0202, {static_cast<std::uint32_t>(thumbnailSize)}),
        b.Ascii(0xFDE9, "of the thumbnail")};
    // clang-format on
    // The maker note's field alone refers to bytes that stand elsewhere.
    if (hasMakerNote) {
        ExifBuilder::Field note = b.Raw(0x927C, 7, MakerNote);
        note.Value = b.Number(MakerNotePlace, 4);
        exif.insert(exif.begin() + 11, note);
    }
    const std::uint32_t imagePlace = b.Directory(image);
    b.SetFirst(imagePlace);
    const std::uint32_t exifPlace = b.Directory(exif);
    const std::uint32_t gpsPlace = b.Directory(gps);
    const std::uint32_t interoperabilityPlace = b.Directory(interoperability);
    const std::uint32_t thumbnailPlace = b.Directory(thumbnail);
    b.SetField(imagePlace, 9, exifPlace);
    b.SetField(imagePlace, 10, gpsPlace);
    b.SetNext(imagePlace, static_cast<std::uint32_t>(image.size()), thumbnailPlace);
    b.SetField(exifPlace, hasMakerNote ? 17 : 16, interoperabilityPlace);
    b.SetField(thumbnailPlace, 4, b.Append(Thumbnail));
    Block = b.Get();
}
