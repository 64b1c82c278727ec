#pragma once

#include "metadata/MetaData.h"

namespace ImagingFramework {

/// A file of a format that has a decoder. What the format has beyond the items of all goes into `GetFormatItem`.
template <class Decoder, FileFormat Format> class ReadableMetaData : public MetaData, protected Decoder {
public:
    ReadableMetaData() = default;
    ~ReadableMetaData() override { CloseFinally(); }

    bool GetItem(ItemTag& tag) override {
        CheckRuntimeReadState(tag);
        switch (tag.GetMetaDataId()) {
        case MetaDataId::FrameBitmap:
        case MetaDataId::FrameThumbnail:
            this->DecodeToTag(tag);
            return true;
        case MetaDataId::FrameCount:
            tag = Decoder::GetFrameCount();
            return true;
        default:
            return GetFormatItem(tag) || MetaData::GetItem(tag);
        }
    }

protected:
    /// False when the format does not have the item, or the file has no value for it.
    virtual bool GetFormatItem(ItemTag& tag) = 0;

    void RefreshRead() override {
        RequireFormat(Format);
        Decoder::Attach(GetAttachedStream());
        SetFrameInfo(*this, Format);
    }
    void RefreshWrite() override { throw MetaDataWritingNotAllowedException(); }
    void DetachFrames() override { Decoder::Detach(); }
};

/// A file of one frame, of a format that has an encoder as well; `SetFormatItem` is for what is its own.
template <class Decoder, class Encoder, FileFormat Format>
class FormatMetaData : public ReadableMetaData<Decoder, Format>, protected Encoder {
public:
    FormatMetaData() = default;
    ~FormatMetaData() override { this->CloseFinally(); }

    bool SetItem(ItemTag& tag) override {
        this->CheckRuntimeWriteState(tag);
        if (tag.GetMetaDataId() == MetaDataId::FrameBitmap) {
            this->EncodeFrame(static_cast<BitmapData&>(tag), 0, 0);
            return true;
        }
        return SetFormatItem(tag) || MetaData::SetItem(tag);
    }

protected:
    /// False when the item cannot be set.
    virtual bool SetFormatItem(ItemTag& tag) = 0;

    void RefreshWrite() override {
        this->SetMediaFormat(Format);
        Encoder::Attach(this->GetAttachedStream(), 0, 0);
    }
    void DetachFrames() override {
        Decoder::Detach();
        Encoder::Detach();
    }
};

} // namespace ImagingFramework
