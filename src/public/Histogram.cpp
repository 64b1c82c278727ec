#include <Corvane/Rasterloom/Histogram.h>

#include "CallEngine.h"
#include "ObjectGuard.h"
#include "transforms/Histogram.h"

#include <limits>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

Histogram::Histogram(std::unique_ptr<engine::Histogram> histogram) : m_pHistogram(std::move(histogram)) {
    if (!m_pHistogram) {
        throw Host::ArgumentNullException("histogram");
    }
}

Histogram::~Histogram() { DisposeFinally(); }

void Histogram::Dispose(bool disposing) {
    m_pHistogram.reset();
    LockableObject::Dispose(disposing);
}

engine::Histogram& Histogram::get__Internal() const {
    if (!m_pHistogram) {
        throw Host::ObjectDisposedException("Histogram");
    }
    return *m_pHistogram;
}

template <class Read> auto Histogram::ReadCounts(Read read) {
    const ObjectGuard guard(*this);
    return CallEngine([&] { return read(get__Internal()); });
}

std::uint32_t Histogram::CheckIndex(std::int32_t index) const {
    if (index < 0 || static_cast<std::uint32_t>(index) >= get__Internal().GetSize()) {
        throw Host::ArgumentOutOfRangeException("index");
    }
    return static_cast<std::uint32_t>(index);
}

std::int32_t Histogram::get_Length() {
    return ReadCounts([](const engine::Histogram& counts) { return static_cast<std::int32_t>(counts.GetSize()); });
}

bool Histogram::get_IsExtended() {
    return ReadCounts([](const engine::Histogram& counts) { return counts.GetSize() > 256; });
}

std::int64_t Histogram::get_Item(std::int32_t index) {
    return ReadCounts([&](const engine::Histogram& counts) { return std::int64_t{counts.GetEntry(CheckIndex(index))}; });
}

void Histogram::set_Item(std::int32_t index, std::int64_t value) {
    if (value < 0 || value > std::numeric_limits<std::uint32_t>::max()) {
        throw Host::ArgumentOutOfRangeException("value");
    }
    const ObjectGuard guard(*this);
    get__Internal().SetEntry(CheckIndex(index), static_cast<std::uint32_t>(value));
}

std::int32_t Histogram::get_Width() {
    return ReadCounts([](const engine::Histogram& counts) { return static_cast<std::int32_t>(counts.GetWidth()); });
}

std::int32_t Histogram::get_Height() {
    return ReadCounts([](const engine::Histogram& counts) { return static_cast<std::int32_t>(counts.GetHeight()); });
}

std::int32_t Histogram::get_ChannelCount() {
    return ReadCounts([](const engine::Histogram& counts) { return static_cast<std::int32_t>(counts.GetChannelCount()); });
}

double Histogram::get_Mean() {
    return ReadCounts([](const engine::Histogram& counts) { return counts.CalculateMean(); });
}

double Histogram::get_StdDev() {
    return ReadCounts([](const engine::Histogram& counts) { return counts.CalculateStdDev(); });
}

std::int32_t Histogram::get_Median() {
    return ReadCounts([](const engine::Histogram& counts) { return static_cast<std::int32_t>(counts.CalculateMedian()); });
}

std::int32_t Histogram::GetPercentile(float fraction) {
    return ReadCounts(
        [&](const engine::Histogram& counts) { return static_cast<std::int32_t>(counts.GetPercentile(fraction)); });
}

} // namespace Corvane::Rasterloom
