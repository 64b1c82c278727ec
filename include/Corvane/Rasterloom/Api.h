#pragma once

/// `RASTERLOOM_API` marks what the shared library exports. `RASTERLOOM_BUILDING` is defined while the library itself is
/// built, `RASTERLOOM_STATIC` for whoever builds or uses the static one.
#if defined(_WIN32) && !defined(RASTERLOOM_STATIC)
#if defined(RASTERLOOM_BUILDING)
#define RASTERLOOM_API __declspec(dllexport)
#else
#define RASTERLOOM_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
// The static library exports too: a failure class must be one and the same class in every module of a process.
#define RASTERLOOM_API __attribute__((visibility("default")))
#else
#define RASTERLOOM_API
#endif
