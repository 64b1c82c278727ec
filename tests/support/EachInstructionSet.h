#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace ImagingFramework::Testing {

/// Runs `body` once for each instruction set that this machine has, with the vector loops of the library bound to it.
template <class Body> void ForEachInstructionSet(const Body& body) {
    for (std::int64_t rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1) {
        const std::int64_t target = rest & -rest;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(target);
        body();
        hwy::SetSupportedTargetsForTest(0);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
}

} // namespace ImagingFramework::Testing
