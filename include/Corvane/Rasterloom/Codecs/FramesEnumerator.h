#pragma once

#include <Corvane/Rasterloom/Codecs/IFrame.h>

#include <cstdint>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

class FormatReader;
template <class T>
class ObjectLink;

/// A cursor over the frames of a reader, at first before the first one. It may outlive the reader; it then fails with
/// `ObjectNotOpenedException` ("reader"). Not for several threads at once.
class RASTERLOOM_API FramesEnumerator {
public:
    /// Before the first frame.
    explicit FramesEnumerator(FormatReader& reader);
    ~FramesEnumerator();
    FramesEnumerator(const FramesEnumerator&) = default;
    FramesEnumerator& operator=(const FramesEnumerator&) = default;

    /// Goes to the next frame; false behind the last one.
    bool MoveNext();
    /// Loads the frame at the cursor. Fails as `FormatReader::LoadFrame`, also before the first `MoveNext`.
    std::unique_ptr<IFrame> get_Current() const;
    /// Back before the first frame.
    void Reset() noexcept { m_intIndex = -1; }

private:
    FormatReader& RequireReader() const;

    std::shared_ptr<ObjectLink<FormatReader>> m_pReaderLink;
    std::int32_t m_intIndex = -1;
};

} // namespace Corvane::Rasterloom::Codecs
