#include "Common/ProfileCost.h"

#include <algorithm>
#include <cstddef>

namespace ImagingFramework {

namespace {

/// Multiplications and steps of a search that one colour may cost.
constexpr std::uint64_t CostLimit = 16384;
/// The library refuses profiles of more tags.
constexpr std::uint32_t TagLimit = 100;
constexpr std::uint64_t TagDirectory = 128;
constexpr std::uint64_t TagEntrySize = 12;

constexpr std::uint32_t Signature(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        code = code << 8 | static_cast<std::uint8_t>(text[i]);
    }
    return code;
}

/// Walks the tags of ICC.1:2010 by the positions that the profile tells. What lies outside the profile reads as zero; the
/// library refuses it later.
class CostMeter {
public:
    explicit CostMeter(std::span<const std::uint8_t> profile) : m_profile(profile) {}

    bool IsBounded() const {
        return IsTrueForTags(Signature("mpet"), [this](std::uint64_t tag) { return CostOfElements(tag) <= CostLimit; });
    }

    bool HasRoomForTexts() const {
        return IsTrueForTags(Signature("mluc"), [this](std::uint64_t tag) {
            return tag + 16 + std::uint64_t{Read32(tag + 8)} * 12 <= m_profile.size();
        });
    }

private:
    /// Whether `question` holds for the position of every tag of the type.
    template <class Question> bool IsTrueForTags(std::uint32_t type, Question question) const {
        const std::uint32_t tags = std::min(Read32(TagDirectory), TagLimit);
        for (std::uint32_t i = 0; i < tags; ++i) {
            const std::uint64_t tag = Read32(TagDirectory + 4 + i * TagEntrySize + 4);
            if (Read32(tag) == type && !question(tag)) {
                return false;
            }
        }
        return true;
    }

    std::uint32_t Read(std::uint64_t position, int bytes) const {
        std::uint32_t value = 0;
        for (int i = 0; i < bytes; ++i, ++position) {
            value = value << 8 | (position < m_profile.size() ? m_profile[position] : 0U);
        }
        return value;
    }
    std::uint32_t Read16(std::uint64_t position) const { return Read(position, 2); }
    std::uint32_t Read32(std::uint64_t position) const { return Read(position, 4); }

    std::uint64_t CostOfElements(std::uint64_t tag) const {
        const std::uint32_t count = Read32(tag + 12);
        std::uint64_t cost = count;
        for (std::uint32_t i = 0; i < count && cost <= CostLimit; ++i) {
            cost += CostOfElement(tag + Read32(tag + 16 + std::uint64_t{i} * 8));
        }
        return cost;
    }

    std::uint64_t CostOfElement(std::uint64_t element) const {
        const std::uint32_t inputs = Read16(element + 8);
        const std::uint32_t outputs = Read16(element + 10);
        switch (Read32(element)) {
        case Signature("cvst"):
            return CostOfCurves(element, inputs);
        case Signature("clut"):
            return std::uint64_t{outputs} << std::min(inputs, 32U);
        default:
            return std::uint64_t{inputs} * outputs;
        }
    }

    /// Each segment of a curve is a step of the search for the one that holds the value.
    std::uint64_t CostOfCurves(std::uint64_t element, std::uint32_t count) const {
        std::uint64_t cost = count;
        for (std::uint32_t i = 0; i < count && cost <= CostLimit; ++i) {
            cost += Read16(element + Read32(element + 12 + std::uint64_t{i} * 8) + 8);
        }
        return cost;
    }

    std::span<const std::uint8_t> m_profile;
};

} // namespace

bool IsProfileCostBounded(std::span<const std::uint8_t> profile) { return CostMeter(profile).IsBounded(); }

bool HasRoomForTexts(std::span<const std::uint8_t> profile) { return CostMeter(profile).HasRoomForTexts(); }

} // namespace ImagingFramework
