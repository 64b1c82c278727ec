// The destructors of the interfaces, which anchor their type information in this library.

#include <Corvane/Rasterloom/Codecs/CustomEncoderOptions.h>
#include <Corvane/Rasterloom/Codecs/IFormatInfo.h>
#include <Corvane/Rasterloom/Codecs/IFrame.h>
#include <Corvane/Rasterloom/Codecs/IMetadataReadSupport.h>
#include <Corvane/Rasterloom/Codecs/IMetadataWriteSupport.h>
#include <Corvane/Rasterloom/Codecs/ITimeReader.h>
#include <Corvane/Rasterloom/Codecs/ITimeWriter.h>

namespace Corvane::Rasterloom::Codecs {

IFormatInfo::~IFormatInfo() = default;
IFrame::~IFrame() = default;
IEncoderOptions::~IEncoderOptions() = default;
IMetadataReadSupport::~IMetadataReadSupport() = default;
IMetadataWriteSupport::~IMetadataWriteSupport() = default;
ITimeReader::~ITimeReader() = default;
ITimeWriter::~ITimeWriter() = default;

EncoderOptions::~EncoderOptions() = default;
std::unique_ptr<IFrame> EncoderOptions::ToFrame() const { return nullptr; }
CustomEncoderOptions::~CustomEncoderOptions() = default;

} // namespace Corvane::Rasterloom::Codecs
