// Reads the input as an IPTC block. What was kept must come out again and read back equal, every text must be UTF-8,
// and values that are set again must stand as they are.

#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/Iptc/IptcDataStorage.h"
#include "metadata/Streams/MemoryReader.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

using namespace ImagingFramework;

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

std::vector<std::uint8_t> Binary(const IptcData& data) {
    std::vector<std::uint8_t> bytes;
    data.GetIptcAsBinary(bytes);
    return bytes;
}

void SetAgain(const IptcDataStorage& storage, std::uint32_t key) {
    std::string text;
    Require(storage.GetItemString(key, text) && IsUtf8(text));
    std::vector<DataItem> values;
    Require(storage.GetItemArray(key, values));
    std::vector<std::optional<std::string>> texts;
    for (const DataItem& value : values) {
        const bool isText = value.GetType() == DataType::String;
        texts.push_back(isText ? std::optional(static_cast<std::string&>(value)) : std::nullopt);
    }
    IptcDataStorage copy = storage;
    copy.SetItemArray(key, values); // as far as they are not empty
    std::vector<DataItem> again;
    copy.GetItemArray(key, again);
    Require(again.size() <= texts.size());
    for (std::size_t i = 0; i < again.size(); ++i) {
        Require(!texts[i] || static_cast<std::string&>(again[i]) == *texts[i]);
        again[i].FreePointerValue();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const std::uint8_t none = 0;
    MemoryReader reader(size == 0 ? &none : pData, size);
    IptcDataStorage storage;
    try {
        storage.Initialize(&reader);
    } catch (const OutOfRangeException&) {
        // A data set that is cut off; those before it are kept.
    }
    const std::vector<std::uint8_t> first = Binary(storage);
    Require(first.size() <= size);
    if (!first.empty()) {
        MemoryReader again(first.data(), first.size());
        IptcDataStorage copy;
        copy.Initialize(&again);
        Require(Binary(copy) == first);
    }
    std::uint32_t key = 0;
    for (std::uint32_t index = 0; index < 16 && storage.GetKey(index, key); ++index) {
        SetAgain(storage, key);
    }
    return 0;
}
