#include "transforms/resize/PairSum.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <immintrin.h>

namespace ImagingFramework {

namespace {

/// One instruction multiplies and adds here, where the loop for all processors takes two.
template <int Channels, int Digits>
__attribute__((target("avx512f,avx512vnni"))) void SumPairs(const PairSumTask& task) {
    __m512i sums[Channels * Digits];
    for (__m512i& sum : sums) {
        sum = _mm512_setzero_si512();
    }
    const std::int32_t* weights = task.Weights;
    for (std::size_t i = 0; i < task.SpanCount; ++i) {
        const std::int16_t* data = task.Spans[i].Data;
        for (std::size_t pair = 0; pair < task.Spans[i].Pairs; ++pair) {
            for (int c = 0; c < Channels; ++c) {
                const __m512i samples = _mm512_load_si512(data + static_cast<std::size_t>(c) * task.ChannelStride);
                for (int d = 0; d < Digits; ++d) {
                    __m512i& sum = sums[c * Digits + d];
                    sum = _mm512_dpwssd_epi32(sum, samples, _mm512_set1_epi32(weights[d]));
                }
            }
            weights += Digits;
            data += task.PairStride;
        }
    }
    for (int i = 0; i < Channels * Digits; ++i) {
        _mm512_store_si512(task.Sums + i * 16, sums[i]);
    }
}

} // namespace

PairSumFunction ChooseDotProductSum(int channels, std::uint32_t digits) {
    if (!__builtin_cpu_supports("avx512vnni")) {
        return nullptr;
    }
    return ChoosePairSum(channels, digits, []<int Channels, int Digits>(PairCount<Channels>, PairCount<Digits>) {
        return &SumPairs<Channels, Digits>;
    });
}

} // namespace ImagingFramework

#else

namespace ImagingFramework {

PairSumFunction ChooseDotProductSum(int, std::uint32_t) { return nullptr; }

} // namespace ImagingFramework

#endif
