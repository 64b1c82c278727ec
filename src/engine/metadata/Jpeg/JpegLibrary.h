#pragma once

// The library's header needs size_t and FILE before it.
#include <cstddef>
#include <cstdio>

#include <jerror.h>
#include <jpeglib.h>

static_assert(JPEG_LIB_VERSION == 62, "the structures are those of version 62");
