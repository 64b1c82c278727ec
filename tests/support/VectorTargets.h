#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <hwy/targets.h>

/// Runs `body` once with each instruction set that was compiled in and that this machine has.
template <class Body> void ForEachVectorTarget(Body body) {
    for (std::int64_t rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1) {
        const std::int64_t target = rest & -rest;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(target);
        body();
        hwy::SetSupportedTargetsForTest(0);
    }
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}
