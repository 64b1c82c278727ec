#pragma once

#include "metadata/Frames/IScanLineConsumer.h"

#include <memory>
#include <vector>

namespace ImagingFramework {

/// Hands the lines of an image to consumers.
class IScanLineProducer {
public:
    virtual ~IScanLineProducer() = default;
    /// Runs through a frame; null means the first one.
    virtual void Start(const std::uint32_t* pFrameIndex) = 0;
    virtual void AddConsumer(std::shared_ptr<IScanLineConsumer> pConsumer) = 0;
    virtual void RemoveConsumer(const std::shared_ptr<IScanLineConsumer>& pConsumer) = 0;
    virtual void RemoveAllConsumers() = 0;
};

class IScanLineProducerImpl : public IScanLineProducer {
public:
    /// Fails with `UnexpectedException`: a producer tells by its own how it starts.
    void Start(const std::uint32_t* pFrameIndex) override;
    /// Fails with `ArgumentNullPointerException` ("pConsumer") on null.
    void AddConsumer(std::shared_ptr<IScanLineConsumer> pConsumer) override;
    void RemoveConsumer(const std::shared_ptr<IScanLineConsumer>& pConsumer) override;
    void RemoveAllConsumers() override { m_consumers.clear(); }

protected:
    /// In order of addition.
    std::vector<std::shared_ptr<IScanLineConsumer>> m_consumers;
};

} // namespace ImagingFramework
