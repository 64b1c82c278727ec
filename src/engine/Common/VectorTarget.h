#pragma once

/// True in a pass over a file that is compiled once for each instruction set (Google Highway's dynamic dispatch) when that
/// pass stands for processors without vectors that are worth it. The canonical loops run there.
#define RASTERLOOM_PLAIN_TARGET (HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128)
