#include "metadata/Frames/IScanLineProducer.h"

#include "ErrorHandling/Exceptions.h"

namespace ImagingFramework {

void IScanLineConsumerImpl::Initialize(std::shared_ptr<const FilterData> pSourceImageMetaData) {
    if (pSourceImageMetaData == nullptr) {
        throw ArgumentNullPointerException("pSourceImageMetaData");
    }
    m_pSourceImageMetaData = std::move(pSourceImageMetaData);
}

void IScanLineProducerImpl::Start(const std::uint32_t*) {
    throw UnexpectedException("Start() is not implemented");
}

void IScanLineProducerImpl::AddConsumer(std::shared_ptr<IScanLineConsumer> pConsumer) {
    if (pConsumer == nullptr) {
        throw ArgumentNullPointerException("pConsumer");
    }
    m_consumers.push_back(std::move(pConsumer));
}

void IScanLineProducerImpl::RemoveConsumer(const std::shared_ptr<IScanLineConsumer>& pConsumer) {
    std::erase(m_consumers, pConsumer);
}

} // namespace ImagingFramework
