#include "metadata/Iptc/IptcDataset.h"

#include "Common/AnsiCodePage.h"
#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/Iptc/IptcTags.h"
#include "metadata/Streams/AbstractReader.h"
#include "metadata/Streams/AbstractWriter.h"

namespace ImagingFramework {

bool IptcDataset::Initialize(AbstractReader* pReader) {
    if (pReader == nullptr) {
        throw ArgumentNullPointerException("pReader");
    }
    if (pReader->GetRemaining() < 3 || pReader->ReadByte() != TagMarker) {
        return false;
    }
    m_uintRecord = pReader->ReadByte();
    m_uintDataset = pReader->ReadByte();
    const std::size_t high = pReader->ReadByte();
    const std::size_t size = high << 8 | pReader->ReadByte();
    m_strData.clear();
    if (size > MaxDataSize) {
        SetKey(0);
        return false;
    }
    m_strData.resize(size);
    if (size != 0) {
        pReader->ReadBytes(size, m_strData.data(), size);
    }
    return true;
}

void IptcDataset::Serialize(AbstractWriter& writer) const {
    if (m_strData.size() > MaxDataSize) {
        throw UnexpectedException("Large IPTC tags (> 0x7FFF bytes long) are not supported by now.");
    }
    const std::uint8_t header[HeaderSize] = {TagMarker, m_uintRecord, m_uintDataset,
                                             static_cast<std::uint8_t>(m_strData.size() >> 8),
                                             static_cast<std::uint8_t>(m_strData.size() & 0xFF)};
    writer.WriteBytes(header, sizeof header);
    if (!m_strData.empty()) {
        writer.WriteString(m_strData);
    }
}

void IptcDataset::SetData(std::span<const std::uint8_t> data) {
    m_strData.assign(reinterpret_cast<const char*>(data.data()), data.size());
}

void IptcDataset::SetData(std::string_view text, IptcEncoding encoding) {
    if (encoding == IptcEncoding::Utf8) {
        m_strData = text;
        return;
    }
    const std::vector<std::byte> bytes = Utf8ToAnsi(text);
    m_strData.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

bool IptcDataset::GetTagDescription(std::string& text) const {
    const IptcTag* const tag = FindIptcTag(GetKey());
    text = tag != nullptr ? tag->Description : std::string_view();
    return tag != nullptr;
}

std::string IptcDataset::ToText(IptcEncoding encoding) const {
    if (FindIptcTag(GetKey()) == nullptr) {
        return {};
    }
    const std::string_view bytes(m_strData.c_str()); // up to the NUL
    if (encoding == IptcEncoding::Utf8 && IsUtf8(bytes)) {
        return std::string(bytes);
    }
    return AnsiToUtf8(std::as_bytes(std::span(bytes)));
}

} // namespace ImagingFramework
